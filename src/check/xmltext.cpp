#include "check/xmltext.h"

#include "base/codepage.h"

#include <vector>

namespace kervan::xml {

qsizetype entity(QByteArrayView text, char &meant)
{
    struct Known
    {
        QByteArrayView word;
        char meant;
    };
    static constexpr std::array<Known, 5> known{
        {{"&amp;", '&'}, {"&lt;", '<'}, {"&gt;", '>'}, {"&quot;", '"'}, {"&apos;", '\''}}};
    for (const Known &each : known) {
        if (text.startsWith(each.word)) {
            meant = each.meant;
            return each.word.size();
        }
    }
    if (!text.startsWith("&#"))
        return 0;
    const bool hex = text.size() > 2 && text[2] == 'x';
    const qsizetype from = hex ? 3 : 2;
    const qsizetype end = text.first(std::min<qsizetype>(text.size(), 12)).indexOf(';');
    bool fine = false;
    const uint code = end > from ? text.sliced(from, end - from).toUInt(&fine, hex ? 16 : 10) : 0;
    if (!fine || code == 0 || code > 0x10FFFF)
        return 0;
    meant = code > 0xFFFF ? '?' : toCodePage(QString(QChar(static_cast<char16_t>(code))))[0];
    return end + 1;
}

void resolve(QByteArrayView text, QByteArray &out)
{
    out.resize(0);
    while (true) {
        const qsizetype at = text.indexOf('&');
        if (at < 0)
            break;
        out += text.first(at);
        char meant = '&';
        const qsizetype length = entity(text.sliced(at), meant);
        out += meant;
        text = text.sliced(at + std::max<qsizetype>(length, 1));
    }
    out += text;
}

Small smallNumber(QByteArrayView text)
{
    text = text.trimmed();
    Small result;
    const bool negative = text.startsWith('-');
    if (negative)
        text = text.sliced(1);
    int count = 0;
    int behind = -1;
    for (const char c : text) {
        if (c == '.' && behind < 0) {
            behind = 0;
            continue;
        }
        if (c < '0' || c > '9' || ++count > 18)
            return {};
        result.digits = result.digits * 10 + (c - '0');
        behind += behind >= 0;
    }
    for (; behind > 0 && result.digits % 10 == 0; --behind)
        result.digits /= 10;
    result.decimals = std::max(behind, 0);
    result.digits = negative ? -result.digits : result.digits;
    result.fine = count > 0;
    return result;
}

bool isBalanced(QByteArrayView value)
{
    std::vector<QByteArrayView> open;
    const char *const end = value.data() + value.size();
    for (const char *at = find(value.data(), end, '<'); at; at = find(at, end, '<')) {
        const bool closes = end - at > 1 && at[1] == '/';
        const char *const name = at + (closes ? 2 : 1);
        at = endOfName(name, end);
        if (at == name || at == end || *at != '>')
            return false;
        const QByteArrayView text(name, at - name);
        if (!closes)
            open.push_back(text);
        else if (open.empty() || open.back() != text)
            return false;
        else
            open.pop_back();
    }
    return open.empty();
}

} // namespace kervan::xml
