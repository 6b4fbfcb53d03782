#pragma once

#include <cstddef>

namespace kervan {

/// How a number is spelled: "#" shows a digit only where the number has one, "0" always does, ","
/// between them asks for group marks, and what stands behind "." are the decimals. So a value
/// below 1 has no digit before the mark under "#.00" and one under "#0.00".
struct Mask
{
    int leadingDigits = 0;
    int decimals = 0;
    bool grouped = false;
};

/// "#,##0.00"_mask and its likes.
consteval Mask operator""_mask(const char *text, std::size_t length)
{
    Mask mask;
    bool behindPoint = false;
    for (std::size_t i = 0; i < length; ++i) {
        switch (text[i]) {
        case '0':
            ++(behindPoint ? mask.decimals : mask.leadingDigits);
            break;
        case ',':
            mask.grouped = true;
            break;
        case '.':
            behindPoint = true;
            break;
        case '#':
            break;
        default:
            throw "a mask knows # 0 , and . only";
        }
    }
    return mask;
}

} // namespace kervan
