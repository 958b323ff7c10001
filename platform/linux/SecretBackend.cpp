#include "platform/SecretBackend.h"

#include "platform/linux/FreedesktopSecretBackend.h"

#include <atomic>

namespace {

FreedesktopSecretBackend secretService;
std::atomic<SecretBackend *> backendInForce = &secretService;

} // namespace

SecretBackend &SecretBackend::current()
{
    return *backendInForce.load();
}

ScopedSecretBackend::ScopedSecretBackend(SecretBackend &backend)
{
    backendInForce = &backend;
}

ScopedSecretBackend::~ScopedSecretBackend()
{
    backendInForce = &secretService;
}
