#pragma once

#include "check/documentreader.h"

#include <QByteArrayView>

#include <algorithm>
#include <array>
#include <utility>

namespace kervan::shape {

// What of the documents of each family is looked at.

/// Where an element stands: only records and their lines have any that are looked at.
enum class Place : quint8 { Other, Record, Line };

/// What an element of a line is worth.
enum Part { Code, Unit, Quantity, Price, Vat, ExtraRate, ExtraBase, LineType, Parts };

/// Tells names apart at one look: their first letters and their length.
constexpr quint64 keyOf(QByteArrayView name)
{
    auto key = static_cast<quint64>(name.size());
    for (qsizetype i = 0; i < std::min<qsizetype>(name.size(), 7); ++i)
        key = key << 8U | static_cast<unsigned char>(name[i]);
    return key;
}

/// An element that is looked at, with what it is of a record or a line.
struct Wanted
{
    DocumentFamily family;
    Place place;
    QByteArrayView name;
    int field = -1; // of the record
    int part = -1;  // of a line
    bool amount = false;
    quint64 key = keyOf(name);
};

inline constexpr auto wanted = std::to_array<Wanted>({
    {DocumentFamily::Invoices, Place::Line, "TYPE", -1, LineType},
    {DocumentFamily::Invoices, Place::Line, "MASTER_CODE", -1, Code},
    {DocumentFamily::Invoices, Place::Line, "QUANTITY", -1, Quantity},
    {DocumentFamily::Invoices, Place::Line, "PRICE", -1, Price},
    {DocumentFamily::Invoices, Place::Line, "UNIT_CODE", -1, Unit},
    {DocumentFamily::Invoices, Place::Line, "VAT_RATE", -1, Vat},
    {DocumentFamily::Invoices, Place::Line, "ADD_TAX_RATE", -1, ExtraRate},
    {DocumentFamily::Invoices, Place::Line, "ADD_TAX_VAT_MATRAH", -1, ExtraBase},
    {DocumentFamily::Invoices, Place::Record, "TYPE", DocumentRecord::Kind},
    {DocumentFamily::Invoices, Place::Record, "NUMBER", DocumentRecord::Number},
    {DocumentFamily::Invoices, Place::Record, "DATE", DocumentRecord::Date},
    {DocumentFamily::Invoices, Place::Record, "ARP_CODE", DocumentRecord::Customer},
    {DocumentFamily::Invoices, Place::Record, "GL_CODE", DocumentRecord::Account},
    {DocumentFamily::Invoices, Place::Record, "PAYMENT_CODE", DocumentRecord::Plan},

    {DocumentFamily::CashSlips, Place::Record, "TYPE", DocumentRecord::Kind},
    {DocumentFamily::CashSlips, Place::Record, "NUMBER", DocumentRecord::Number},
    {DocumentFamily::CashSlips, Place::Record, "DATE", DocumentRecord::Date},
    {DocumentFamily::CashSlips, Place::Record, "SD_CODE", DocumentRecord::Account},
    {DocumentFamily::CashSlips, Place::Record, "MASTER_TITLE", DocumentRecord::Title},
    {DocumentFamily::CashSlips, Place::Record, "AMOUNT", -1, -1, true},
    {DocumentFamily::CashSlips, Place::Line, "ARP_CODE", DocumentRecord::Customer},

    {DocumentFamily::Rolls, Place::Record, "TYPE", DocumentRecord::Kind},
    {DocumentFamily::Rolls, Place::Record, "NUMBER", DocumentRecord::Number},
    {DocumentFamily::Rolls, Place::Record, "DATE", DocumentRecord::Date},
    {DocumentFamily::Rolls, Place::Record, "MASTER_CODE", DocumentRecord::Customer},
    {DocumentFamily::Rolls, Place::Record, "TOTAL", -1, -1, true},
    {DocumentFamily::Rolls, Place::Line, "OWING", DocumentRecord::Title},
    {DocumentFamily::Rolls, Place::Line, "DUE_DATE", DocumentRecord::Plan},

    {DocumentFamily::BankSlips, Place::Record, "TYPE", DocumentRecord::Kind},
    {DocumentFamily::BankSlips, Place::Record, "NUMBER", DocumentRecord::Number},
    {DocumentFamily::BankSlips, Place::Record, "DATE", DocumentRecord::Date},
    {DocumentFamily::BankSlips, Place::Record, "AUXIL_CODE", DocumentRecord::Customer},
    {DocumentFamily::BankSlips, Place::Record, "NOTES1", DocumentRecord::Title},
    {DocumentFamily::BankSlips, Place::Record, "TOTAL_DEBIT", -1, -1, true},
    {DocumentFamily::BankSlips, Place::Line, "BANKACC_CODE", DocumentRecord::Account},

    {DocumentFamily::CardSlips, Place::Record, "TYPE", DocumentRecord::Kind},
    {DocumentFamily::CardSlips, Place::Record, "NUMBER", DocumentRecord::Number},
    {DocumentFamily::CardSlips, Place::Record, "DATE", DocumentRecord::Date},
    {DocumentFamily::CardSlips, Place::Record, "ARP_CODE", DocumentRecord::Customer},
    {DocumentFamily::CardSlips, Place::Record, "NOTES1", DocumentRecord::Title},
    {DocumentFamily::CardSlips, Place::Record, "BANKACC_CODE", DocumentRecord::Account},
    {DocumentFamily::CardSlips, Place::Record, "TOTAL_CREDIT", -1, -1, true},

    {DocumentFamily::Accounts, Place::Record, "ACCOUNT_TYPE", DocumentRecord::Kind},
    {DocumentFamily::Accounts, Place::Record, "CODE", DocumentRecord::Number},
    {DocumentFamily::Accounts, Place::Record, "TITLE", DocumentRecord::Title},

    {DocumentFamily::Items, Place::Record, "CARD_TYPE", DocumentRecord::Kind},
    {DocumentFamily::Items, Place::Record, "CODE", DocumentRecord::Number},
    {DocumentFamily::Items, Place::Record, "NAME", DocumentRecord::Title},
    {DocumentFamily::Items, Place::Record, "UNITSET_CODE", DocumentRecord::Plan},
    {DocumentFamily::Items, Place::Line, "GLACC_CODE", DocumentRecord::Account},

    {DocumentFamily::Counts, Place::Record, "TYPE", DocumentRecord::Kind},
    {DocumentFamily::Counts, Place::Record, "NUMBER", DocumentRecord::Number},
    {DocumentFamily::Counts, Place::Record, "DATE", DocumentRecord::Date},
    {DocumentFamily::Counts, Place::Line, "ITEM_CODE", -1, Code},
    {DocumentFamily::Counts, Place::Line, "QUANTITY", -1, Quantity},
    {DocumentFamily::Counts, Place::Line, "UNIT_CODE", -1, Unit},
});

inline constexpr auto records = std::to_array<std::pair<QByteArrayView, DocumentFamily>>({
    {"INVOICE", DocumentFamily::Invoices},
    {"SD_TRANSACTION", DocumentFamily::CashSlips},
    {"CHQPN_ROLL", DocumentFamily::Rolls},
    {"BANK_VOUCHER", DocumentFamily::BankSlips},
    {"ARP_VOUCHER", DocumentFamily::CardSlips},
    {"AR_AP", DocumentFamily::Accounts},
    {"ITEM", DocumentFamily::Items},
    {"SLIP", DocumentFamily::Counts},
});

inline constexpr auto roots = std::to_array<std::pair<QByteArrayView, DocumentFamily>>({
    {"SALES_INVOICES", DocumentFamily::Invoices},
    {"PURCHASE_INVOICES", DocumentFamily::Invoices},
    {"SD_TRANSACTIONS", DocumentFamily::CashSlips},
    {"CQPN_ROLLS", DocumentFamily::Rolls},
    {"BANK_VOUCHERS", DocumentFamily::BankSlips},
    {"ARP_VOUCHERS", DocumentFamily::CardSlips},
    {"AR_APS", DocumentFamily::Accounts},
    {"ITEMS", DocumentFamily::Items},
    {"MATERIAL_SLIPS", DocumentFamily::Counts},
});

} // namespace kervan::shape
