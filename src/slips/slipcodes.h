#pragma once

#include <QString>

namespace kervan {

/// The two codes that a slip screen shows, which lists and documents carry.
struct SlipCodes
{
    QString kasaKodu;
    QString bankaHesapKodu;
};

} // namespace kervan
