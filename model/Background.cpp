#include "model/Background.h"

QThreadPool &Background::threads()
{
    // Never destroyed: that would wait for networks that don't answer.
    static QThreadPool *const pool = [] {
        static constexpr int enough = 32;
        auto *made = new QThreadPool;
        made->setMaxThreadCount(enough);
        return made;
    }();
    return *pool;
}

void Background::waitForAll()
{
    threads().waitForDone();
}
