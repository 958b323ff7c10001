#include "engine/Headless.h"
#include "engine/ProcessSetup.h"
#include "engine/WindowLoader.h"
#include "platform/CoreDumps.h"
#include "tools/OneShotSecret.h"

#include <QFile>

#include <algorithm>
#include <cstdlib>
#include <span>
#include <string_view>

// The one executable does one of three things: hands a secret to a child tool, runs one backup
// cycle without a window, or shows the window. Unknown words of the command line are ignored.
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

    return WindowLoader::run(argc, argv);
}
