#include "engine/WindowLoader.h"

#include "platform/ExecutablePath.h"
#include "state/Texts.h"

#include <QFile>
#include <QFileInfo>

#include <cstdio>
#include <cstdlib>

#include <dlfcn.h>

namespace {

using Window = int (*)(int, char *[]);

QString modulePath()
{
    const QString folder = QFileInfo(ownExecutablePath().value_or(QString())).path();
    return folder + QLatin1String("/../lib/vellomar/libvellomar-window.so");
}

Window loaded()
{
    void *const module =
        ::dlopen(QFile::encodeName(modulePath()).constData(), RTLD_LAZY | RTLD_LOCAL);
    // What it exports is a function of this type.
    return module == nullptr ? nullptr
                             : reinterpret_cast<Window>(::dlsym(module, "vellomar_window"));
}

} // namespace

int WindowLoader::run(int argc, char *argv[])
{
    const Window window = loaded();
    if (window == nullptr) {
        const QString message =
            Texts::tr("Vellomar: la finestra non si può caricare (%1).\n"
                      "Per un backup senza finestra: vellomar --backup --manual\n")
                .arg(QString::fromLocal8Bit(::dlerror()));
        static_cast<void>(std::fputs(qUtf8Printable(message), stderr));
        return EXIT_FAILURE;
    }
    return window(argc, argv);
}
