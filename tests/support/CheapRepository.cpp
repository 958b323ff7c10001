#include "tests/support/CheapRepository.h"

#include "tests/support/Files.h"

#include <QByteArray>
#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRandomGenerator>

#include <array>

#include <gcrypt.h>

namespace {

constexpr int cipherKeyLength = 32;
constexpr int macKeyLength = 16; // of each of its two halves
constexpr int nonceLength = 16;
constexpr int macLength = 16;
constexpr int saltLength = 64;

// What restic encrypts a file with: AES-256 in counter mode, and Poly1305-AES over what comes out.
struct Keys
{
    QByteArray cipher;
    QByteArray macCipher;
    QByteArray macFactor;
};

QByteArray randomBytes(int length)
{
    QByteArray bytes(length, Qt::Uninitialized);
    for (char &byte : bytes) {
        byte = static_cast<char>(QRandomGenerator::global()->bounded(256));
    }
    return bytes;
}

// The factor of Poly1305 has some of its bits clear.
QByteArray clamped(QByteArray factor)
{
    for (const int at : {3, 7, 11, 15}) {
        factor[at] = static_cast<char>(factor.at(at) & 0x0f);
    }
    for (const int at : {4, 8, 12}) {
        factor[at] = static_cast<char>(factor.at(at) & 0xfc);
    }
    return factor;
}

Keys keysOf(const QByteArray &bytes)
{
    return {bytes.first(cipherKeyLength), bytes.sliced(cipherKeyLength, macKeyLength),
            clamped(bytes.sliced(cipherKeyLength + macKeyLength, macKeyLength))};
}

size_t sizeOf(const QByteArray &bytes)
{
    return static_cast<size_t>(bytes.size());
}

QByteArray mac(const Keys &keys, const QByteArray &nonce, const QByteArray &content)
{
    const QByteArray key = keys.macCipher + keys.macFactor;
    QByteArray result(macLength, '\0');
    size_t length = macLength;
    gcry_mac_hd_t handle = nullptr;
    gcry_mac_open(&handle, GCRY_MAC_POLY1305_AES, 0, nullptr);
    gcry_mac_setkey(handle, key.constData(), sizeOf(key));
    gcry_mac_setiv(handle, nonce.constData(), sizeOf(nonce));
    gcry_mac_write(handle, content.constData(), sizeOf(content));
    gcry_mac_read(handle, result.data(), &length);
    gcry_mac_close(handle);
    return result;
}

// A file of restic's: the nonce, the content encrypted, and the code over that.
QByteArray encrypted(const Keys &keys, QByteArray content)
{
    const QByteArray nonce = randomBytes(nonceLength);
    gcry_cipher_hd_t handle = nullptr;
    gcry_cipher_open(&handle, GCRY_CIPHER_AES256, GCRY_CIPHER_MODE_CTR, 0);
    gcry_cipher_setkey(handle, keys.cipher.constData(), sizeOf(keys.cipher));
    gcry_cipher_setctr(handle, nonce.constData(), sizeOf(nonce));
    gcry_cipher_encrypt(handle, content.data(), sizeOf(content), nullptr, 0);
    gcry_cipher_close(handle);
    return nonce + content + mac(keys, nonce, content);
}

QString base64(const QByteArray &bytes)
{
    return QString::fromLatin1(bytes.toBase64());
}

QByteArray json(const QJsonObject &object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

// What scrypt is asked for: the least that it takes, in blocks of the one size that libgcrypt has.
constexpr int work = 2;
constexpr int blockSize = 8;
constexpr int parallel = 1;

QByteArray keyFile(const Keys &keys, const QString &password)
{
    const QByteArray secret = password.toUtf8();
    const QByteArray salt = randomBytes(saltLength);
    QByteArray derived(cipherKeyLength + 2 * macKeyLength, '\0');
    if (gcry_kdf_derive(secret.constData(), sizeOf(secret), GCRY_KDF_SCRYPT, work, salt.constData(),
                        sizeOf(salt), parallel, sizeOf(derived), derived.data()) != 0) {
        return {};
    }
    const QByteArray data = encrypted(
        keysOf(derived),
        json({{QStringLiteral("mac"), QJsonObject{{QStringLiteral("k"), base64(keys.macCipher)},
                                                  {QStringLiteral("r"), base64(keys.macFactor)}}},
              {QStringLiteral("encrypt"), base64(keys.cipher)}}));
    return json(
        {{QStringLiteral("created"), QDateTime::currentDateTimeUtc().toString(Qt::ISODateWithMs)},
         {QStringLiteral("username"), QStringLiteral("test")},
         {QStringLiteral("hostname"), QStringLiteral("test")},
         {QStringLiteral("kdf"), QStringLiteral("scrypt")},
         {QStringLiteral("N"), work},
         {QStringLiteral("r"), blockSize},
         {QStringLiteral("p"), parallel},
         {QStringLiteral("salt"), base64(salt)},
         {QStringLiteral("data"), base64(data)}});
}

QByteArray configuration(const Keys &keys)
{
    return encrypted(
        keys, json({{QStringLiteral("version"), 2},
                    {QStringLiteral("id"), QString::fromLatin1(randomBytes(32).toHex())},
                    // One of the polynomials that restic chooses at random.
                    {QStringLiteral("chunker_polynomial"), QStringLiteral("2bbc0c8459ad85")}}));
}

bool write(const QString &path, const QByteArray &content)
{
    return !content.isEmpty() && writeFile(path, content) &&
           QFile::setPermissions(path, QFileDevice::ReadOwner);
}

} // namespace

bool CheapRepository::make(const QString &folder, const QString &password)
{
    gcry_check_version(nullptr);
    const Keys keys = keysOf(randomBytes(cipherKeyLength + 2 * macKeyLength));
    const QByteArray key = keyFile(keys, password);
    const QString name =
        QString::fromLatin1(QCryptographicHash::hash(key, QCryptographicHash::Sha256).toHex());
    bool made = true;
    for (const char *part : {"data", "index", "keys", "locks", "snapshots"}) {
        made = made && QDir(folder).mkpath(QLatin1String(part));
    }
    for (int i = 0; i < 256; ++i) {
        made =
            made && QDir(folder).mkpath(QStringLiteral("data/%1").arg(i, 2, 16, QLatin1Char('0')));
    }
    return made && write(folder + QLatin1String("/keys/") + name, key) &&
           write(folder + QLatin1String("/config"), configuration(keys));
}
