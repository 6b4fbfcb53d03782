#include "support/hostile.h"

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

QString nul()
{
    return QString(QChar(u'\0'));
}

QString half(char16_t surrogate)
{
    return QString(QChar(surrogate));
}

} // namespace

const QList<HostileTexts> &hostileTexts()
{
    static const QList<HostileTexts> all{
        {"apostrophes alone",
         Fate::Refused,
         {u"'"_s, u"a'b"_s, u"'a"_s, u"a'"_s, u"'''"_s, u"a'''b"_s, u"'' '"_s, u"a''b'c"_s,
          u"' '"_s, u"Ali'nin Yeri"_s}},
        {"ways out of the quotes",
         Fate::Refused,
         {u"' or '1'='1"_s, u"'; drop table urun --"_s, u"'); delete from firma; --"_s, u"' /*"_s,
          u"x' and 1=1 --"_s, u"' union select * from L_CAPIFIRM --"_s,
          u"\\'; drop table urun --"_s, u"'+char(39)+'"_s, u"';exec xp_cmdshell 'dir' --"_s,
          u"'||(select 1)||'"_s, u"', kaskod = 'x"_s, u"x','y'); --"_s, u"' where id='1"_s,
          u"'\r\nGO\r\n--"_s}},
        {"apostrophes in pairs",
         Fate::Halved,
         {u"''"_s, u"a''b"_s, u"''''"_s, u"''a''"_s, u"Ali''nin Yeri"_s,
          u"''; drop table urun --''"_s, u"'' or ''1''=''1"_s, u"''''; --"_s, u"\\''"_s,
          u"''{fn now()}''?"_s}},
        {"NUL",
         Fate::Refused,
         {nul(), u"a"_s + nul() + u"b"_s, u"a"_s + nul(), nul() + u"'"_s, nul() + u"' --"_s}},
        {"comments",
         Fate::Kept,
         {u"--"_s, u"a -- b"_s, u"/*"_s, u"*/"_s, u"/* a */"_s, u"/**/"_s, u"--\n"_s, u"#"_s,
          u";--"_s, u"*/ -- /*"_s, u"//"_s, u"rem"_s}},
        {"further statements",
         Fate::Kept,
         {u";"_s, u"a;b"_s, u"; drop table urun"_s, u";;"_s, u"; select 1;"_s, u"\r\nGO\r\n"_s,
          u"; shutdown"_s, u"; waitfor delay 0"_s, u"); delete from firma; ("_s,
          u"attach database x as y"_s, u"pragma journal_mode=off"_s, u"begin; rollback;"_s}},
        {"procedures and variables",
         Fate::Kept,
         {u"xp_cmdshell"_s, u"exec sp_executesql N"_s, u"@@version"_s, u"@p1"_s, u":x"_s, u"$1"_s,
          u"char(39)"_s, u"nchar(39)"_s, u"0x27"_s, u"load_extension(1)"_s}},
        {"a driver's escapes",
         Fate::Kept,
         {u"{fn now()}"_s, u"{d 2024-03-07}"_s, u"{ts 2024-03-07 09:05:03}"_s, u"{"_s, u"}"_s,
          u"{}"_s, u"{call x}"_s, u"{?=call x(?)}"_s, u"{oj a}"_s, u"{escape \\}"_s, u"{{"_s,
          u"}}"_s}},
        {"marks of parameters",
         Fate::Kept,
         {u"?"_s, u"??"_s, u"a?b"_s, u"?,?"_s, u"{?}"_s, u"? --"_s, u"%1"_s, u"%1 %2 %L1"_s}},
        {"wildcards",
         Fate::Kept,
         {u"%"_s, u"_"_s, u"a%"_s, u"%a%"_s, u"____"_s, u"[a-z]%"_s, u"^"_s, u"*"_s, u"100%"_s}},
        {"other quotes and brackets",
         Fate::Kept,
         {u"\""_s, u"\"\""_s, u"\"a\""_s, u"a\"b"_s, u"["_s, u"]"_s, u"]]"_s, u"[x]"_s, u"`"_s,
          u"``"_s, u"N"_s, u"(("_s}},
        {"backslashes and spellings of an apostrophe",
         Fate::Kept,
         {u"\\"_s, u"\\\\"_s, u"a\\"_s, u"\\n"_s, u"\\0"_s, u"\\x27"_s, u"\\u0027"_s, u"%27"_s,
          u"&apos;"_s, u"&#39;"_s, u"%00"_s}},
        // A code page that has no place for these makes an apostrophe of some.
        {"letters that look like quotes",
         Fate::Kept,
         {u"\u2018"_s, u"\u2019"_s, u"\u201A"_s, u"\u201B"_s, u"\u2032"_s, u"\u2035"_s, u"\u02B9"_s,
          u"\u02BC"_s, u"\u02C8"_s, u"\u055A"_s, u"\u05F3"_s, u"\uA78C"_s, u"\uFF07"_s, u"\uFF02"_s,
          u"\u00B4"_s, u"\u02BC; drop table urun --"_s,
          u"\uFF07\uFF1B drop table urun \uFF0D\uFF0D"_s, u"\u201C\u201D"_s, u"\u00AB\u00BB"_s}},
        {"Turkish letters",
         Fate::Kept,
         {u"\u0131\u0130iI"_s, u"\u015F\u015E\u011F\u011E"_s, u"\u0130STANBUL"_s, u"istanbul"_s,
          u"ISPARTA"_s, u"\u0131sparta"_s, u"\u00E7\u00C7\u00F6\u00D6\u00FC\u00DC"_s,
          u"\u00E2\u00EE\u00FB"_s}},
        {"letters outside the code page",
         Fate::Kept,
         {u"\u20AC"_s, u"\u2192"_s, u"\u041F\u0440\u0438\u0432\u0435\u0442"_s,
          u"\u03A9\u03BC\u03B5"_s, u"\u4E2D\u6587"_s, u"\u05D0\u05D1"_s, u"\u0627\u0628"_s,
          u"\u0141\u00F3d\u017A"_s, u"\u0151"_s, u"\uFB01"_s, u"\u00DF\u1E9E"_s, u"\u212A"_s}},
        {"pairs of surrogates",
         Fate::Kept,
         {u"\U0001F600"_s, u"\U00010400\U00010428"_s, u"a\U0001D49Cb"_s, u"\U0010FFFD"_s}},
        {"half a pair",
         Fate::Refused,
         {half(0xD83D), u"a"_s + half(0xDE00) + u"b"_s, half(0xDE00) + half(0xD83D)}},
        {"combining and invisible letters",
         Fate::Kept,
         {u"e\u0301"_s, u"i\u0307"_s, u"\u0301"_s, u"a\u200Db"_s, u"\u200B"_s, u"\u00AD"_s,
          u"\uFEFF"_s, u"\u2060"_s}},
        {"marks of direction",
         Fate::Kept,
         {u"\u200E"_s, u"\u200F"_s, u"\u202Eabc"_s, u"\u2066a\u2069"_s, u"a\u202D--"_s}},
        {"blanks",
         Fate::Kept,
         {u""_s, u" "_s, u"  a"_s, u"a  "_s, u"  a  b  "_s, u"\u00A0"_s, u"\u3000"_s,
          u"\u2003a"_s}},
        {"control characters",
         Fate::Kept,
         {u"\r\n"_s, u"\n"_s, u"\r"_s, u"\t"_s, u"a\tb\r\nc"_s, u"\u0001"_s, u"\u0008"_s,
          u"\u000B\u000C"_s, u"\u001A"_s, u"\u001B[0m"_s, u"\u007F"_s, u"\u0085"_s, u"\u2028"_s}},
        {"numbers and words",
         Fate::Kept,
         {u"1,5"_s, u"1.5"_s, u"1e5"_s, u"-7"_s, u"0x1F"_s, u"1.234,56"_s, u"00123"_s, u"NaN"_s,
          u"\u221E"_s, u"\u0661\u0662"_s, QString(40, u'9'), u"true"_s, u"NULL"_s, u"Null"_s,
          u"select"_s, u"where"_s}},
        {"long ones",
         Fate::Kept,
         {QString(4000, u'x'), QString(8000, u'x'), QString(8001, u'\u015F'), QString(30000, u';'),
          QString(9000, u'"'), u"{fn "_s.repeated(3000), QString(8000, u' ') + u"--"_s}},
        {"long ones with an apostrophe",
         Fate::Refused,
         {QString(7999, u'x') + u"'"_s, u"'"_s + QString(9000, u'x'), QString(8001, u'\'')}},
        {"long ones of pairs", Fate::Halved, {QString(8000, u'\''), u"''x"_s.repeated(4000)}},
    };
    return all;
}

QString meant(const QString &text, Fate fate)
{
    switch (fate) {
    case Fate::Kept:
        return text;
    case Fate::Halved:
        return QString(text).replace(u"''"_s, u"'"_s);
    case Fate::Refused:
        break;
    }
    return {};
}

} // namespace kervan
