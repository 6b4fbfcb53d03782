#include "workbook/xlsx.h"

#include "base/failure.h"
#include "workbook/sheetnames.h"
#include "workbook/xlsxsheet.h"
#include "workbook/zippackage.h"

#include <QDir>
#include <QHash>
#include <QMap>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

using Token = XmlScanner::Token;

struct Relation
{
    QByteArray kind; ///< the last word of its type, which the transitional and strict forms share
    QByteArray part;
};

struct SheetEntry
{
    QString name;
    QByteArray relation;
};

class XlsxReader
{
public:
    explicit XlsxReader(const QByteArray &bytes)
        : m_package(bytes)
    {
    }

    QStringList names()
    {
        const QByteArray workbook = workbookPart();
        m_relations = relations(workbook);
        readWorkbook(workbook);
        QStringList names;
        for (const SheetEntry &entry : std::as_const(m_sheets)) {
            const Relation relation = m_relations.value(entry.relation);
            if (relation.kind != "worksheet")
                continue; // charts and macro sheets have no cells for us
            names << entry.name;
            m_parts << relation.part;
        }
        return names;
    }

    std::shared_ptr<const Sheet> read(const QString &sheetName)
    {
        const QByteArray part = m_parts[findSheet(names(), sheetName)];
        readStyles(partOf("styles"));
        const QByteArray strings = partOf("sharedStrings");
        QList<SheetBuilder::Text> texts;
        if (m_package.has(strings)) {
            XmlScanner xml = scanner(strings, ZipPackage::mostUnpacked);
            texts = readSharedStrings(xml, m_builder);
        }
        XmlScanner xml = scanner(part, ZipPackage::mostUnpacked);
        readWorksheet(xml, texts, m_builder);
        return m_builder.finish();
    }

private:
    XmlScanner scanner(const QByteArray &name, qint64 most = ZipPackage::mostUnpackedAside)
    {
        auto part = std::make_shared<ZipPackage::Part>(m_package.open(name, most));
        return XmlScanner([part](char *to, qsizetype room) { return part->read(to, room); });
    }

    QByteArray workbookPart()
    {
        if (m_package.has("_rels/.rels")) {
            const auto all = relations({});
            for (const Relation &relation : all) {
                if (relation.kind == "officeDocument")
                    return relation.part;
            }
        }
        if (m_package.has("xl/workbook.xml"))
            return "xl/workbook.xml";
        if (m_package.has("content.xml"))
            throw Failure(u"OpenDocument biçimi okunmaz; .xlsx olarak kaydedin"_s);
        throw Failure(u"Excel çalışma kitabı değil"_s);
    }

    // The relations of a part, or of the whole package, by their ids.
    QMap<QByteArray, Relation> relations(const QByteArray &part)
    {
        const qsizetype slash = part.lastIndexOf('/');
        const QByteArray folder = slash < 0 ? QByteArray() : part.first(slash + 1);
        XmlScanner xml = scanner(folder + "_rels/" + part.sliced(slash + 1) + ".rels");
        QMap<QByteArray, Relation> found;
        for (Token token = xml.next(); token != Token::Finished; token = xml.next()) {
            if (token != Token::Start || !xml.isNamed("Relationship"))
                continue;
            const QByteArray type = xml.attribute("Type");
            QByteArray target = xml.attribute("Target").replace('\\', '/');
            target = target.startsWith('/') ? target.sliced(1) : folder + target;
            found.insert(xml.attribute("Id"),
                         {.kind = type.sliced(type.lastIndexOf('/') + 1),
                          .part = QDir::cleanPath(QString::fromUtf8(target)).toUtf8()});
        }
        return found;
    }

    QByteArray partOf(QByteArrayView kind) const
    {
        for (const Relation &relation : m_relations) {
            if (relation.kind == kind)
                return relation.part;
        }
        return {};
    }

    void readWorkbook(const QByteArray &part)
    {
        if (part.endsWith(".bin"))
            throw Failure(u".xlsb biçimi okunmaz; Excel'de .xlsx olarak kaydedin"_s);
        XmlScanner xml = scanner(part);
        if (xml.next() != Token::Start || !xml.isNamed("workbook"))
            throw Failure(u"Excel çalışma kitabı değil"_s);
        for (Token token = xml.next(); token != Token::Finished; token = xml.next()) {
            if (token != Token::Start)
                continue;
            if (xml.isNamed("workbookPr")) {
                const QByteArray starts1904 = xml.attribute("date1904");
                m_builder.starts1904 = starts1904 == "1" || starts1904 == "true";
            } else if (xml.isNamed("sheet")) {
                m_sheets.append({.name = QString::fromUtf8(xml.attribute("name")),
                                 .relation = xml.attribute("id")});
            }
        }
    }

    // The code as it stands where its references are damaged: it still says whether it is of a
    // date.
    static QString formatCode(XmlScanner &xml)
    {
        QByteArray code;
        const auto failed = passOver([&] { code = xml.attribute("formatCode"); });
        if (failed) {
            while (const auto attribute = xml.nextAttribute()) {
                if (attribute->isNamed("formatCode"))
                    code = attribute->raw.toByteArray();
            }
        }
        return QString::fromUtf8(code);
    }

    void readStyles(const QByteArray &part)
    {
        if (!m_package.has(part))
            return;
        XmlScanner xml = scanner(part);
        QHash<int, QString> codes;
        bool inCellFormats = false;
        for (Token token = xml.next(); token != Token::Finished; token = xml.next()) {
            if (token == Token::Text)
                continue;
            if (xml.isNamed("cellXfs")) {
                inCellFormats = token == Token::Start;
            } else if (token == Token::Start && xml.isNamed("numFmt")) {
                const int id = xml.attribute("numFmtId").toInt();
                codes.insert(id, formatCode(xml));
            } else if (token == Token::Start && inCellFormats && xml.isNamed("xf")) {
                const int id = xml.attribute("numFmtId").toInt();
                m_builder.formats.append(cellFormat(id, codes.value(id)));
            }
        }
    }

    ZipPackage m_package;
    QMap<QByteArray, Relation> m_relations;
    QList<SheetEntry> m_sheets;
    QList<QByteArray> m_parts; ///< of the sheets that hold cells
    SheetBuilder m_builder;
};

} // namespace

std::shared_ptr<const Sheet> readXlsx(const QByteArray &bytes, const QString &sheetName)
{
    return XlsxReader(bytes).read(sheetName);
}

QStringList xlsxSheetNames(const QByteArray &bytes)
{
    return XlsxReader(bytes).names();
}

} // namespace kervan
