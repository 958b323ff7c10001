#include "ui/sources/SourcesTexts.h"

#include "state/Fmt.h"
#include "state/Texts.h"

QString SourcesTexts::name(const QString &path, const QString &home)
{
    if (path == home) {
        return Texts::tr("Cartella Inizio");
    }
    const QString last = path.section(u'/', -1, -1, QString::SectionSkipEmpty);
    if (last.isEmpty() && path.startsWith(u'/')) {
        return QStringLiteral("/");
    }
    return last.trimmed().isEmpty() ? Texts::tr("Cartella senza nome") : last;
}

QString SourcesTexts::symbol(const QString &path, const QString &home)
{
    return path == home ? QStringLiteral("house") : QStringLiteral("folder");
}

QString SourcesTexts::size(std::optional<qint64> bytes)
{
    return bytes ? Fmt::byteCount(*bytes) : QString();
}

QString SourcesTexts::measure(bool measuring, qint64 soFar)
{
    return measuring ? Texts::tr("Misura in corso: %1").arg(Fmt::byteCount(soFar))
                     : Texts::tr("Misura le cartelle");
}

QString SourcesTexts::total(std::optional<qint64> bytes)
{
    return bytes ? Texts::tr("Da salvare %1, esclusioni già tolte").arg(Fmt::byteCount(*bytes))
                 : QString();
}

QString SourcesTexts::fault()
{
    return Texts::tr("Esclusione non valida: finché c'è, nessun backup riesce.");
}

QString SourcesTexts::faults(qsizetype count)
{
    return count == 0 ? QString()
                      : Texts::tr("%n esclusioni non sono valide: finché ci sono, nessun backup "
                                  "riesce.",
                                  nullptr, Texts::count(count));
}
