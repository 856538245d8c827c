#include "URIReference.h"

#include <algorithm>
#include <string_view>

namespace quib {

namespace {

bool isLetter(char16_t unit)
{
    return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z');
}

bool isDigit(char16_t unit)
{
    return unit >= u'0' && unit <= u'9';
}

bool isHexadecimal(char16_t unit)
{
    return isDigit(unit) || (unit >= u'a' && unit <= u'f') || (unit >= u'A' && unit <= u'F');
}

/// Letters, digits, marks and delimiters that every component may hold, escapes, and what this one may hold besides.
bool isMadeOf(QStringView component, std::u16string_view others)
{
    constexpr std::u16string_view kCommon = u"-._~!$&'()*+,;=";
    for (qsizetype i = 0; i < component.size(); ++i) {
        const char16_t unit = component[i].unicode();
        if (unit == u'%') {
            if (i + 2 >= component.size() || !isHexadecimal(component[i + 1].unicode()) ||
                !isHexadecimal(component[i + 2].unicode())) {
                return false;
            }
            i += 2;
        } else if (!isLetter(unit) && !isDigit(unit) && kCommon.find(unit) == std::u16string_view::npos &&
                   others.find(unit) == std::u16string_view::npos) {
            return false;
        }
    }
    return true;
}

/// An address in brackets: of which kind, and whether it is complete, is for whoever connects to it.
bool isLiteral(QStringView host)
{
    return host.size() > 2 && host.startsWith(u'[') && host.endsWith(u']') &&
           isMadeOf(host.sliced(1, host.size() - 2), u":") && !host.contains(u'%');
}

bool isAuthority(QStringView authority)
{
    const qsizetype at = authority.lastIndexOf(u'@');
    if (at >= 0 && !isMadeOf(authority.first(at), u":")) {
        return false;
    }
    const QStringView place = authority.sliced(at + 1);
    const qsizetype colon = place.lastIndexOf(u':');
    const bool hasPort = colon >= 0 && place.indexOf(u']', colon) < 0;
    const QStringView host = hasPort ? place.first(colon) : place;
    const QStringView port = hasPort ? place.sliced(colon + 1) : QStringView();
    return (isLiteral(host) || isMadeOf(host, u"")) &&
           std::ranges::all_of(port, [](QChar unit) { return isDigit(unit.unicode()); });
}

bool isScheme(QStringView scheme)
{
    return !scheme.isEmpty() && isLetter(scheme.front().unicode()) && std::ranges::all_of(scheme, [](QChar unit) {
        const char16_t c = unit.unicode();
        return isLetter(c) || isDigit(c) || c == u'+' || c == u'-' || c == u'.';
    });
}

} // namespace

bool isURIReference(QStringView text)
{
    const qsizetype fragment = text.indexOf(u'#');
    if (fragment >= 0) {
        if (!isMadeOf(text.sliced(fragment + 1), u":@/?")) {
            return false;
        }
        text = text.first(fragment);
    }
    const qsizetype query = text.indexOf(u'?');
    if (query >= 0) {
        if (!isMadeOf(text.sliced(query + 1), u":@/?")) {
            return false;
        }
        text = text.first(query);
    }
    // A colon before any slash ends a scheme; the first piece of a path that stands alone has none.
    const qsizetype colon = text.indexOf(u':');
    const qsizetype slash = text.indexOf(u'/');
    if (colon >= 0 && (slash < 0 || colon < slash)) {
        if (!isScheme(text.first(colon))) {
            return false;
        }
        text = text.sliced(colon + 1);
    }
    if (text.startsWith(u"//")) {
        const qsizetype path = text.indexOf(u'/', 2);
        if (!isAuthority(path < 0 ? text.sliced(2) : text.sliced(2, path - 2))) {
            return false;
        }
        text = path < 0 ? QStringView() : text.sliced(path);
    }
    return isMadeOf(text, u":@/");
}

} // namespace quib
