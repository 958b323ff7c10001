#include "state/Texts.h"

#include <QTranslator>

#include <algorithm>
#include <limits>

void Texts::load()
{
    auto *const catalogue = new QTranslator(QCoreApplication::instance());
    if (catalogue->load(QStringLiteral(":/translations/it.qm"))) {
        QCoreApplication::installTranslator(catalogue);
    }
}

int Texts::count(qint64 number)
{
    return static_cast<int>(std::clamp(number, qint64{0}, qint64{std::numeric_limits<int>::max()}));
}
