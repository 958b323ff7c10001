#include "tools/ResticCheck.h"

#include "tests/support/ScriptedTools.h"

#include <gtest/gtest.h>

namespace {

class ResticCheckTest : public testing::Test
{
protected:
    /// What the user reads; absent when nothing is wrong.
    std::optional<QString> fault(const std::optional<ResticCheck::Part> &part = std::nullopt)
    {
        const auto checked = ResticCheck::run(restic, part, &handle);
        return checked ? std::nullopt : std::optional(checked.error().message);
    }

    ScriptedTools tools;
    ProcessHandle handle;
    Restic restic;
};

TEST_F(ResticCheckTest, theStructureAloneIsCheckedWithoutAnOption)
{
    EXPECT_EQ(fault(), std::nullopt);
    ASSERT_EQ(tools.calls.size(), 1);
    EXPECT_EQ(tools.calls.first().arguments, QStringList{QStringLiteral("check")});
    EXPECT_EQ(tools.calls.first().handle, &handle);
    EXPECT_FALSE(tools.calls.first().isFollowed);
}

TEST_F(ResticCheckTest, aPartOfTheDataIsReadBack)
{
    EXPECT_EQ(fault(ResticCheck::Part{.number = 3, .count = 20}), std::nullopt);
    EXPECT_EQ(tools.calls.value(0).arguments.join(u' '),
              QStringLiteral("check --read-data-subset 3/20"));
}

TEST_F(ResticCheckTest, damageIsReportedInOurWords)
{
    tools.check = ScriptedTools::ended(1, QStringLiteral("pack 1234: not found\n"
                                                         "Fatal: repository contains errors\n"));
    EXPECT_EQ(fault(), QStringLiteral("Il backup contiene dati danneggiati"));
}

TEST_F(ResticCheckTest, onlyStandardErrorIsSearchedForDamage)
{
    tools.check = {.status = 1,
                   .standardOutput = QStringLiteral("repository contains errors"),
                   .standardError = QStringLiteral("Fatal: something else")};
    EXPECT_EQ(fault(), QStringLiteral("Fatal: something else"));
}

TEST_F(ResticCheckTest, aCheckThatCouldNotRunHasTheWordsOfTheTool)
{
    tools.check = ScriptedTools::ended(11);
    EXPECT_EQ(fault(), QStringLiteral("Destinazione occupata da un'altra operazione"));
}

} // namespace
