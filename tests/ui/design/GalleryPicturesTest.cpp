#include <gtest/gtest.h>

#include <QDir>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>

namespace {

/// Runs the gallery with a folder for its pictures, as a developer without a display would.
QByteArray run(const QString &folder, const QString &scale)
{
    QProcess gallery;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    environment.insert(QStringLiteral("QT_QUICK_BACKEND"), QStringLiteral("software"));
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), QDir::homePath());
    gallery.setProcessEnvironment(environment);
    gallery.start(QStringLiteral(VELLOMAR_GALLERY),
                  {QStringLiteral("--pictures"), folder, QStringLiteral("--scale"), scale});
    EXPECT_TRUE(gallery.waitForFinished(-1)); // how long that may be is for ctest to say
    EXPECT_EQ(gallery.exitCode(), 0);
    return gallery.readAllStandardError();
}

class GalleryPictures : public testing::TestWithParam<double>
{
};

TEST_P(GalleryPictures, everyPageIsDrawnWithoutAWarning)
{
    const QTemporaryDir folder;
    EXPECT_EQ(run(folder.path(), QString::number(GetParam())).toStdString(), "");
    const QStringList pictures = QDir(folder.path()).entryList(QDir::Files);
    EXPECT_GE(pictures.size(), 9);
    for (const QString &picture : pictures) {
        const QImage image(folder.filePath(picture));
        EXPECT_EQ(image.size(), (QSizeF(980, 660) * GetParam()).toSize()) << picture.toStdString();
        // Each has something written in white, which the ground never is.
        int white = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                white += qGray(image.pixel(x, y)) > 240 ? 1 : 0;
            }
        }
        EXPECT_GT(white, 100) << picture.toStdString();
    }
}

INSTANTIATE_TEST_SUITE_P(atEachScale, GalleryPictures, testing::Values(1.0, 1.25, 1.5, 1.75, 2.0));

} // namespace
