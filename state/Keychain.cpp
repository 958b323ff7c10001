#include "state/Keychain.h"

#include "platform/SecretBackend.h"
#include "state/Texts.h"

#include <QRandomGenerator>
#include <QStringDecoder>

namespace {

QString service()
{
    return QStringLiteral("it.vellomar.app");
}

// A number below `bound` by multiplication; the few products that would favour some of the results
// are drawn again (D. Lemire, Fast Random Integer Generation in an Interval, 2019).
quint64 uniform(quint64 bound, const std::function<quint64()> &random)
{
    __extension__ using Product = unsigned __int128;
    const quint64 threshold = (0 - bound) % bound;
    while (true) {
        const Product product = Product{random()} * bound;
        if (static_cast<quint64>(product) >= threshold) {
            return static_cast<quint64>(product >> 64U);
        }
    }
}

} // namespace

QString KeychainError::message() const
{
    return Texts::tr("Impossibile accedere alla chiave nel Portachiavi (errore %1)").arg(status);
}

tl::expected<std::optional<QString>, KeychainError> Keychain::read(const QString &account)
{
    const SecretBackend::Match match = SecretBackend::current().copyMatching(service(), account);
    if (match.status == SecretBackend::itemNotFound) {
        return std::nullopt;
    }
    if (match.status != 0 || !match.data) {
        return tl::unexpected(KeychainError{match.status});
    }
    // Different bytes must give different secrets: a leading U+FEFF stays, which QString::fromUtf8
    // would drop, and so does an incomplete last character.
    QStringDecoder decode(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless |
                                                    QStringDecoder::Flag::ConvertInitialBom);
    return QString(decode(*match.data));
}

tl::expected<void, KeychainError> Keychain::write(const QString &value, const QString &account)
{
    SecretBackend &backend = SecretBackend::current();
    const QByteArray bytes = value.toUtf8();
    std::int32_t status = backend.update(service(), account, bytes);
    if (status == SecretBackend::itemNotFound) {
        status = backend.add(service(), account, bytes);
    }
    if (status != 0) {
        return tl::unexpected(KeychainError{status});
    }
    return {};
}

tl::expected<QString, KeychainError> Keychain::loadOrCreate(const QString &account)
{
    const auto stored = read(account);
    if (!stored) {
        return tl::unexpected(stored.error());
    }
    if (*stored) {
        return **stored;
    }
    const QString key = generateKey([] { return QRandomGenerator::system()->generate64(); });
    if (const auto written = write(key, account); !written) {
        return tl::unexpected(written.error());
    }
    return key;
}

QString Keychain::generateKey(const std::function<quint64()> &random)
{
    static constexpr QLatin1String alphabet(
        "abcdefghijkmnpqrstuvwxyzABCDEFGHJKLMNPQRSTUVWXYZ23456789");
    static constexpr int length = 32;
    QString key;
    for (int i = 0; i < length; ++i) {
        key += alphabet.at(
            static_cast<qsizetype>(uniform(static_cast<quint64>(alphabet.size()), random)));
    }
    return key;
}
