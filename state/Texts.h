#pragma once

#include <QCoreApplication>

/// What the user reads: `Texts::tr("Italian source text")`, and in QML
/// `qsTranslate("Texts", "…")`. The source text is the key of the look-up, and what comes out where
/// no catalogue has it. All texts of the program are in this one context, so that a text that
/// stands in two places is translated once; where it means two things, the second argument tells
/// them apart. docs/texts.md has the rules.
class Texts
{
    Q_DECLARE_TR_FUNCTIONS(Texts)
};
