#include "engine/Headless.h"
#include "engine/ProcessSetup.h"
#include "engine/WindowModule.h"
#include "platform/CoreDumps.h"
#include "tools/OneShotSecret.h"

#include <QFile>

#include <algorithm>
#include <cstdlib>
#include <span>
#include <string_view>

// The three faces of the one executable: a secret for a child tool, one backup cycle without a
// window, or the window. Words that aren't known are passed over.
int main(int argc, char *argv[])
{
    switchOffCoreDumps();
    if (!ProcessSetup::complete()) {
        return EXIT_FAILURE;
    }
    const std::span words(argv, static_cast<size_t>(argc));
    const auto find = [&words](std::string_view option) {
        return std::find(words.begin(), words.end(), option);
    };

    if (const auto secret = find("--secret"); secret != words.end() && secret + 1 != words.end()) {
        OneShotSecret::deliver(QFile::decodeName(*(secret + 1)));
    }
    if (find("--backup") != words.end()) {
        Headless::run(find("--manual") != words.end());
    }

    return WindowModule::run(argc, argv);
}
