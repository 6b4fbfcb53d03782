#include "workbook/xlscipher.h"

#include "base/failure.h"
#include "workbook/biffrecords.h"
#include "workbook/damage.h"

#include <QCryptographicHash>

#include <algorithm>
#include <array>
#include <functional>
#include <numeric>
#include <utility>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

using Hash = QCryptographicHash;

constexpr qsizetype header = 4;
constexpr qsizetype saltBytes = 16;

QByteArray password()
{
    return QByteArray::fromHex("560065006c00760065007400530077006500610074007300680"
                               "06f007000"); // VelvetSweatshop, in UTF-16
}

QByteArray blockNumber(quint32 block)
{
    QByteArray bytes(4, '\0');
    qToLittleEndian(block, bytes.data());
    return bytes;
}

class Rc4
{
public:
    explicit Rc4(const QByteArray &key)
    {
        std::iota(m_state.begin(), m_state.end(), quint8(0));
        quint8 j = 0;
        for (std::size_t i = 0; i < m_state.size(); ++i) {
            j = quint8(j + m_state[i] + quint8(key[qsizetype(i) % key.size()]));
            std::swap(m_state[i], m_state[j]);
        }
    }

    QByteArray applied(QByteArrayView bytes)
    {
        QByteArray result;
        for (const char byte : bytes) {
            m_j = quint8(m_j + m_state[++m_i]);
            std::swap(m_state[m_i], m_state[m_j]);
            result += char(quint8(byte) ^ m_state[quint8(m_state[m_i] + m_state[m_j])]);
        }
        return result;
    }

private:
    std::array<quint8, 256> m_state{};
    quint8 m_i = 0;
    quint8 m_j = 0;
};

// Deciphers one byte of the stream, whose record's data begin and end there.
using Cipher = std::function<char(char byte, qsizetype at, qsizetype begin, qsizetype end)>;
using BlockKey = std::function<QByteArray(quint32 block)>;

// Every 1024 bytes have a key of their own; what is not enciphered uses its place up all the same.
Cipher rc4Cipher(const BlockKey &keyOf)
{
    constexpr qsizetype blockBytes = 1024;
    return [keyOf, mask = QByteArray(), current = qsizetype(-1)](char byte, qsizetype at, qsizetype,
                                                                 qsizetype) mutable {
        if (at / blockBytes != current) {
            current = at / blockBytes;
            mask = Rc4(keyOf(quint32(current))).applied(QByteArray(blockBytes, '\0'));
        }
        return char(byte ^ mask[at % blockBytes]);
    };
}

// The mask is what the password and its key come to.
Cipher xorCipher()
{
    const QByteArray mask = QByteArray::fromHex("3c5bd417f01f2813f04bb403c473a420");
    return [mask](char byte, qsizetype at, qsizetype begin, qsizetype end) {
        const auto turned = quint8(quint8(byte) << 3U | quint8(byte) >> 5U);
        return char(turned ^ quint8(mask[(at + end - begin) % mask.size()]));
    };
}

// The password fits if both deciphered pieces do: a random one and its hash.
bool fits(const BlockKey &keyOf, Hash::Algorithm hash, QByteArrayView piece, QByteArrayView itsHash)
{
    Rc4 rc4(keyOf(0));
    const QByteArray plain = rc4.applied(piece);
    return Hash::hash(plain, hash) == rc4.applied(itsHash);
}

QByteArray part(QByteArrayView data, qsizetype at, qsizetype size)
{
    if (at < 0 || size < 0 || at > data.size() - size)
        failDamaged();
    return data.sliced(at, size).toByteArray();
}

// 40 bits of a key, hashed with MD5.
Cipher firstRc4(QByteArrayView data)
{
    constexpr qsizetype keyBytes = 5;
    QByteArray salted;
    for (int i = 0; i < 16; ++i)
        salted += Hash::hash(password(), Hash::Md5).first(keyBytes) + part(data, 6, saltBytes);
    const QByteArray key = Hash::hash(salted, Hash::Md5).first(keyBytes);
    const BlockKey keyOf = [key](quint32 block) {
        return Hash::hash(key + blockNumber(block), Hash::Md5);
    };
    if (!fits(keyOf, Hash::Md5, part(data, 22, 16), part(data, 38, 16)))
        return {};
    return rc4Cipher(keyOf);
}

// A key of 40 to 128 bits, hashed with SHA-1; one of 40 bits is filled up.
Cipher laterRc4(QByteArrayView data)
{
    const qsizetype verifier = 14 + qsizetype(numberAt<quint32>(data, 10));
    const auto bits = numberAt<quint32>(data, 14 + 16);
    const qsizetype keyBytes = bits == 0 ? 5 : qsizetype(bits / 8);
    if (keyBytes < 5 || keyBytes > 16)
        return {};
    const QByteArray salted =
        Hash::hash(part(data, verifier + 4, saltBytes) + password(), Hash::Sha1);
    const BlockKey keyOf = [=](quint32 block) {
        const QByteArray key = Hash::hash(salted + blockNumber(block), Hash::Sha1).first(keyBytes);
        return keyBytes == 5 ? key.leftJustified(16, '\0') : key;
    };
    if (!fits(keyOf, Hash::Sha1, part(data, verifier + 20, 16), part(data, verifier + 40, 20)))
        return {};
    return rc4Cipher(keyOf);
}

Cipher cipherOf(QByteArrayView data)
{
    if (numberAt<quint16>(data, 0) == 0) { // key and hash of the password are in the open
        if (numberAt<quint16>(data, 2) != 0xB359 || numberAt<quint16>(data, 4) != 0x9A0A)
            return {};
        return xorCipher();
    }
    if (numberAt<quint16>(data, 2) == 1)
        return firstRc4(data);
    return laterRc4(data);
}

bool isOpen(quint16 type)
{
    constexpr auto open = std::to_array<quint16>(
        {BiffRecords::StartOfPart, BiffRecords::Password, 0x00E1, 0x0138, 0x0194, 0x0195, 0x0196});
    return std::ranges::find(open, type) != open.end();
}

} // namespace

void decipherXls(QByteArray &stream)
{
    Cipher cipher;
    for (qsizetype at = 0; at + header <= stream.size();) {
        const auto type = numberAt<quint16>(stream, at);
        const qsizetype begin = at + header;
        const qsizetype end = begin + numberAt<quint16>(stream, at + 2);
        at = end;
        if (end > stream.size() || (!cipher && type == BiffRecords::EndOfPart))
            return; // damaged, which its reader tells, or not enciphered
        if (type == BiffRecords::Password) {
            cipher = cipherOf(QByteArrayView(stream).sliced(begin, end - begin));
            if (!cipher)
                throw Failure(u"parola ile korunuyor; Excel'de açıp parolasını kaldırın"_s);
        }
        if (!cipher || isOpen(type))
            continue;
        // Where a sheet begins stands in the open.
        const qsizetype from = begin + (type == BiffRecords::SheetEntry ? 4 : 0);
        for (qsizetype i = from; i < end; ++i)
            stream[i] = cipher(stream[i], i, begin, end);
    }
}

} // namespace kervan
