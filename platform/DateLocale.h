#pragma once

#include <QByteArray>

/// The locale for dates, as the environment names it: "it_IT.UTF-8", "C". Empty when it names none.
QByteArray dateLocale();
