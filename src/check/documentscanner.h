#pragma once

#include "check/documentreader.h"
#include "check/documentshape.h"
#include "check/xmltext.h"

#include <span>
#include <vector>

namespace kervan {

/// Takes a document line by line and hands its records on, as readDocument() tells.
class DocumentScanner
{
public:
    DocumentScanner(const TakeRecord &take, DocumentReading &reading)
        : m_take(take)
        , m_reading(reading)
    {
        m_open.reserve(deepest);
    }

    /// The next line, without its line feed. False once there is no sense in going on.
    bool line(const char *at, const char *end);
    /// Whether the lines that follow may hold what check() looks for.
    void setSuspicious(bool suspicious) { m_suspicious = suspicious; }
    void finish();

private:
    static constexpr std::size_t deepest = 64;
    static constexpr qsizetype longestName = 40;
    struct Element
    {
        std::array<char, longestName> text;
        qsizetype length;
        shape::Place place;
        bool hasChildren;

        QByteArrayView name() const { return {text.data(), length}; }
    };

    bool open(QByteArrayView name);
    void close();
    void closeLeaf(QByteArrayView name, shape::Place place, QByteArrayView value);
    void tokens(const char *at, const char *end);
    bool endTag(const char *&at, const char *end);
    bool startTag(const char *&at, const char *end);
    void check(QByteArrayView name, QByteArrayView value);
    void problem(const QString &what, QByteArrayView value);
    void beginRecord(QByteArrayView name);
    void endRecord();
    void endLine();
    void endGoodsLine();
    shape::Place placeBelow(QByteArrayView name) const;

    const TakeRecord &m_take;
    DocumentReading &m_reading;
    std::vector<Element> m_open;
    QByteArray m_text; // of the element in hand, where it does not stand on one line
    qint64 m_line = 0;
    bool m_ended = false; // the root was closed
    bool m_givenUp = false;
    bool m_suspicious = true;

    DocumentRecord m_record;
    std::span<const shape::Wanted> m_wanted; // of the record's family
    std::array<QByteArray, shape::Parts> m_parts;
    struct Taxed
    {
        xml::Small rate;
        Decimal base;
    };
    std::vector<Taxed> m_vats, m_extras; // what the lines of an invoice come to by each rate
};

} // namespace kervan
