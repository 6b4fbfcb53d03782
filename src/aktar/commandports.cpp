#include "aktar/commandports.h"

namespace kervan {

using namespace Qt::StringLiterals;

QString lineOf(const Box &box)
{
    const QString title = box.title.isEmpty() ? u"Kervan Transfer"_s : box.title;
    return title + u": "_s + box.text.simplified();
}

void LineBoxes::setTell(std::function<void(const QString &line)> tell)
{
    m_tell = std::move(tell);
    m_warnings.clear();
}

void LineBoxes::show(const Box &box)
{
    const QString line = lineOf(box);
    if (box.icon != Icon::Information)
        m_warnings << line;
    m_tell(line);
}

bool LineBoxes::ask(const Box &box)
{
    m_tell(u"%1 %2"_s.arg(lineOf(box), m_yes ? u"Evet (--evet verildi)"_s
                                             : u"Hayır (evet demek için --evet)"_s));
    return m_yes;
}

} // namespace kervan
