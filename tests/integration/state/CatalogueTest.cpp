#include <QDirIterator>
#include <QFile>
#include <QMap>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QXmlStreamReader>

#include <gtest/gtest.h>

namespace {

const QStringList &rooms()
{
    static const QStringList all{QStringLiteral("platform"), QStringLiteral("state"),
                                 QStringLiteral("tools"),    QStringLiteral("engine"),
                                 QStringLiteral("model"),    QStringLiteral("ui")};
    return all;
}

/// A text of a catalogue.
struct Message
{
    bool isPlural = false;
    QStringList forms; ///< the translations of a plural; empty ones where it has none yet
};

/// Texts by context and source, with the second argument behind it where there is one.
using Catalogue = QMap<QString, QMap<QString, Message>>;

QString contents(const QString &path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return QString::fromUtf8(file.readAll());
}

Catalogue catalogue(const QString &path)
{
    Catalogue read;
    QXmlStreamReader xml(contents(path));
    QString context;
    QString key;
    bool isPlural = false;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement) {
            continue;
        }
        if (xml.name() == QLatin1String("name")) {
            context = xml.readElementText();
        } else if (xml.name() == QLatin1String("message")) {
            isPlural = xml.attributes().hasAttribute(QLatin1String("numerus"));
        } else if (xml.name() == QLatin1String("source")) {
            key = xml.readElementText();
            read[context][key].isPlural = isPlural;
        } else if (xml.name() == QLatin1String("comment")) {
            const Message message = read[context].take(key);
            key += u'|' + xml.readElementText();
            read[context][key] = message;
        } else if (xml.name() == QLatin1String("numerusform")) {
            read[context][key].forms.append(xml.readElementText());
        }
    }
    EXPECT_FALSE(xml.hasError()) << xml.errorString().toStdString();
    return read;
}

const QString literal = QStringLiteral(R"("(?:[^"\\\n]|\\.)*")");

/// What adjacent literals hold together.
QString joined(const QString &literals)
{
    QString text;
    QRegularExpressionMatchIterator each = QRegularExpression(literal).globalMatch(literals);
    while (each.hasNext()) {
        const QString quoted = each.next().captured();
        text += quoted.mid(1, quoted.size() - 2);
    }
    return text.replace(QLatin1String("\\n"), QLatin1String("\n"))
        .replace(QLatin1String("\\\""), QLatin1String("\""));
}

/// A source without its comments, which stand on lines of their own or behind code.
QString code(const QString &path)
{
    static const QRegularExpression comment(
        literal + QLatin1String(R"(|'(?:\\.|[^'\\\n])'|//[^\n]*|/\*.*?\*/)"),
        QRegularExpression::DotMatchesEverythingOption);
    const QString source = contents(path);
    QString kept;
    qsizetype end = 0;
    QRegularExpressionMatchIterator each = comment.globalMatch(source);
    while (each.hasNext()) {
        const QRegularExpressionMatch match = each.next();
        kept += source.mid(end, match.capturedStart() - end);
        kept += match.captured().startsWith(u'/') ? QString() : match.captured();
        end = match.capturedEnd();
    }
    return kept + source.mid(end);
}

bool isForDevelopers(const QString &path)
{
    return path.contains(QLatin1String("/ui/gallery/")) ||
           path.contains(QLatin1String("/ui/prepared/"));
}

/// The files of the program whose names end like this, by their paths.
QMap<QString, QString> sources(const QStringList &endings)
{
    QMap<QString, QString> read;
    for (const QString &room : rooms()) {
        QDirIterator files(QStringLiteral(VELLOMAR_SOURCE_DIR "/") + room, endings, QDir::Files,
                           QDirIterator::Subdirectories);
        while (files.hasNext()) {
            const QString path = files.next();
            // What the look-up is made of has its name in it, and no text.
            if (!path.endsWith(QLatin1String("/state/Texts.h"))) {
                read[path] = code(path);
            }
        }
    }
    return read;
}

const QStringList cpp{QStringLiteral("*.cpp"), QStringLiteral("*.h")};
const QStringList qml{QStringLiteral("*.qml"), QStringLiteral("*.js")};

/// The calls of the look-up in the sources: each with its literals, which may be none.
QList<QString> calls(const QStringList &endings, const QString &call, const QString &between)
{
    const QRegularExpression form(call + QStringLiteral("((?:\\s*") + between + literal +
                                  QStringLiteral(")*)"));
    QList<QString> found;
    for (const QString &text : sources(endings)) {
        QRegularExpressionMatchIterator each = form.globalMatch(text);
        while (each.hasNext()) {
            found.append(joined(each.next().captured(1)));
        }
    }
    return found;
}

class CatalogueTest : public testing::Test
{
protected:
    void SetUp() override
    {
        QProcess lupdate;
        lupdate.setWorkingDirectory(QStringLiteral(VELLOMAR_SOURCE_DIR));
        lupdate.setProcessChannelMode(QProcess::MergedChannels);
        lupdate.start(QStringLiteral(VELLOMAR_LUPDATE),
                      QStringList{QStringLiteral("-silent"), QStringLiteral("-I"),
                                  QStringLiteral("."), QStringLiteral("-source-language"),
                                  QStringLiteral("it")} +
                          rooms() + QStringList{QStringLiteral("-ts"), m_path});
        ASSERT_TRUE(lupdate.waitForFinished(-1)) << lupdate.errorString().toStdString();
        ASSERT_EQ(lupdate.exitCode(), 0);
        m_complaints = lupdate.readAll();
        extracted = catalogue(m_path);
    }

    QByteArray m_complaints;
    Catalogue extracted;

private:
    QTemporaryDir m_folder;
    QString m_path = m_folder.filePath(QStringLiteral("all.ts"));
};

TEST_F(CatalogueTest, allTextsAreInOneContextAndNoneIsComplainedOf)
{
    EXPECT_EQ(m_complaints.toStdString(), "");
    EXPECT_EQ(extracted.keys(), QStringList{QStringLiteral("Texts")});
}

TEST_F(CatalogueTest, itHoldsEveryTextThatTheSourcesLookUp)
{
    const QList<QString> inCpp = calls(cpp, QStringLiteral(R"(\bTexts::tr\()"), {});
    const QList<QString> inQml =
        calls(qml, QStringLiteral(R"(\bqsTranslate\(\s*"Texts"\s*,)"), QStringLiteral(R"(\+?\s*)"));
    EXPECT_GT(inCpp.size(), 100);
    EXPECT_GT(inQml.size(), 30);

    QSet<QString> expected(inCpp.cbegin(), inCpp.cend());
    expected.unite(QSet<QString>(inQml.cbegin(), inQml.cend()));
    EXPECT_FALSE(expected.contains(QString())) << "a text that isn't a literal";
    QSet<QString> found;
    for (const QString &key : extracted[QStringLiteral("Texts")].keys()) {
        found.insert(key.section(u'|', 0, 0));
    }
    for (const QString &text : expected - found) {
        ADD_FAILURE() << "not in the catalogue: " << text.toStdString();
    }
    for (const QString &text : found - expected) {
        ADD_FAILURE() << "nowhere in the sources: " << text.toStdString();
    }
    EXPECT_EQ(found.size(), expected.size());
}

TEST_F(CatalogueTest, noTextIsLookedUpInAnyOtherWay)
{
    static const QRegularExpression other(QStringLiteral(
        R"(\bqsTr\b|\bqsTrId\b|\bqtTrId\b|\bQT_TR\w*|(?<!Texts::)\btr\(|::translate\(|qsTranslate\((?!\s*"Texts"))"));
    for (const auto &[path, text] : sources(cpp + qml).asKeyValueRange()) {
        EXPECT_FALSE(other.match(text).hasMatch()) << path.toStdString();
    }
}

TEST_F(CatalogueTest, theItalianCatalogueHasBothFormsOfEveryPluralAndNothingElse)
{
    const Catalogue italian =
        catalogue(QStringLiteral(VELLOMAR_SOURCE_DIR "/resources/translations/it.ts"));
    EXPECT_EQ(italian.keys(), extracted.keys());
    QStringList plurals;
    for (const auto &[key, message] : extracted[QStringLiteral("Texts")].asKeyValueRange()) {
        if (message.isPlural) {
            plurals.append(key);
        }
    }
    EXPECT_GT(plurals.size(), 5);
    EXPECT_EQ(italian[QStringLiteral("Texts")].keys().join(u'\n').toStdString(),
              plurals.join(u'\n').toStdString());
    for (const auto &[key, message] : italian[QStringLiteral("Texts")].asKeyValueRange()) {
        EXPECT_EQ(message.forms.size(), 2) << key.toStdString();
        EXPECT_FALSE(message.forms.contains(QString())) << key.toStdString();
    }
}

TEST_F(CatalogueTest, noSentenceStandsInQmlWithoutTheLookUp)
{
    static const QRegularExpression lookedUp(
        QLatin1String(R"re(qsTranslate\(\s*"Texts"\s*,(?:\s*\+?\s*)re") + literal +
        QLatin1String(")*"));
    static const QRegularExpression sentence(QStringLiteral(R"("[^"\n]*\pL \pL[^"\n]*")"));
    EXPECT_TRUE(sentence.match(QStringLiteral("text: \"Così no\"")).hasMatch());
    for (const auto &[path, text] : sources(qml).asKeyValueRange()) {
        if (!isForDevelopers(path)) {
            const QRegularExpressionMatch match = sentence.match(QString(text).remove(lookedUp));
            EXPECT_FALSE(match.hasMatch())
                << path.toStdString() << ": " << match.captured().toStdString();
        }
    }
}

TEST_F(CatalogueTest, noTextIsGluedToAnother)
{
    static const QRegularExpression glued(QStringLiteral(
        R"re((\+\s*(Texts::tr|qsTranslate)\()|((Texts::tr|qsTranslate)\((?:[^()"]|"(?:[^"\\]|\\.)*")*\)\s*\+))re"));
    EXPECT_TRUE(
        glued.match(QStringLiteral(R"re(qsTranslate("Texts", "a (b)") + name)re")).hasMatch());
    EXPECT_TRUE(glued.match(QStringLiteral(R"re(name + Texts::tr("a"))re")).hasMatch());
    EXPECT_FALSE(glued.match(QStringLiteral(R"re(qsTranslate("Texts", "a " + "b"))re")).hasMatch());
    for (const auto &[path, text] : sources(cpp + qml).asKeyValueRange()) {
        const QRegularExpressionMatch match = glued.match(text);
        EXPECT_FALSE(match.hasMatch())
            << path.toStdString() << ": " << match.captured().toStdString();
    }
}

} // namespace
