#pragma once

#include <QCoreApplication>

/// The texts that the user reads: `Texts::tr("Italian source text")`, and in QML
/// `qsTranslate("Texts", "…")`. The source text is the key of the look-up, and the result where no
/// catalogue has it. All texts of the program are in this one context, so that a text used in two
/// places is translated once; where it has two meanings, the second argument says which. The third
/// is a count that chooses between singular and plural, and replaces %n. The rules are in
/// docs/texts.md.
class Texts
{
    Q_DECLARE_TR_FUNCTIONS(Texts)

public:
    /// Loads the program's own catalogue, which holds the singulars of the Italian texts. To be
    /// called once there is an application object. A run without a window has none; its texts are
    /// those of the source.
    static void load();

    /// A number as the count of a text. For one that is too large or negative the result chooses
    /// the right form but isn't the number: such a text uses %1 instead of %n.
    static int count(qint64 number);
};
