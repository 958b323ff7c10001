#pragma once

#include <QCoreApplication>

/// What the user reads: `Texts::tr("Italian source text")`, and in QML
/// `qsTranslate("Texts", "…")`. The source text is the key of the look-up, and what comes out where
/// no catalogue has it. All texts of the program are in this one context, so that a text that
/// stands in two places is translated once; where it means two things, the second argument says
/// which. The third is a count that chooses between singular and plural, and takes the place
/// of %n. docs/texts.md has the rules.
class Texts
{
    Q_DECLARE_TR_FUNCTIONS(Texts)

public:
    /// Has the application object look up the program's own catalogue, which holds the singulars of
    /// the Italian texts. To be called once there is one. Without it, texts come out as in the
    /// source: those of a run without a window, which has no application object.
    static void load();

    /// A number as the count of a text. One that is too large, or negative, is right for the choice
    /// of the form but not for %n: the text then has %1 in its place.
    static int count(qint64 number);
};
