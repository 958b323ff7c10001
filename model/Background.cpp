#include "model/Background.h"

#include "tools/ChildEnvironment.h"

namespace {

// Never destroyed: that would wait for networks that don't answer.
QThreadPool *madePool(int threads)
{
    auto *made = new QThreadPool;
    made->setMaxThreadCount(threads);
    return made;
}

} // namespace

void Background::begin()
{
    ChildEnvironment::keep();
}

QThreadPool &Background::threads()
{
    static constexpr int enough = 32;
    static QThreadPool *const pool = madePool(enough);
    return *pool;
}

QThreadPool &Background::orderly()
{
    static QThreadPool *const pool = madePool(1);
    return *pool;
}

void Background::waitForAll()
{
    threads().waitForDone();
    orderly().waitForDone();
}
