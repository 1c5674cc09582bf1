#include "common/wildcard.h"

namespace wb
{

namespace
{

char16_t UpperOf(QChar character)
{
    const char16_t code = character.unicode();
    if (code < 0x80)
        return code >= u'a' && code <= u'z' ? char16_t(code - 32) : code;
    return QChar::toUpper(char32_t(code)) <= 0xFFFF ? char16_t(QChar::toUpper(char32_t(code))) : code;
}

bool EndsWith(QStringView name, QStringView ending)
{
    if (name.size() < ending.size())
        return false;
    const QStringView tail = name.last(ending.size());
    for (qsizetype index = ending.size() - 1; index >= 0; --index) {
        if (UpperOf(tail[index]) != ending[index].unicode())
            return false;
    }
    return true;
}

// Backtracks to the last "*" only, so the time is at most the product of both lengths.
bool MatchesGeneral(QStringView name, QStringView pattern)
{
    qsizetype at = 0;
    qsizetype next = 0;
    qsizetype star = -1;
    qsizetype starAt = 0;
    while (at < name.size()) {
        const bool isStar = next < pattern.size() && pattern[next] == u'*';
        if (isStar) {
            star = next++;
            starAt = at;
        } else if (next < pattern.size() && (pattern[next] == u'?' || pattern[next] == UpperOf(name[at]))) {
            ++next;
            ++at;
        } else if (star >= 0) {
            next = star + 1;
            at = ++starAt;
        } else {
            return false;
        }
    }
    while (next < pattern.size() && pattern[next] == u'*')
        ++next;
    return next == pattern.size();
}

} // namespace

Wildcard::Wildcard(const QString &pattern)
{
    if (pattern == u"*" || pattern == u"*.*") {
        m_form = Form::Everything;
        return;
    }
    m_text = pattern;
    for (QChar &character : m_text)
        character = UpperOf(character);
    const QStringView rest = QStringView(m_text).mid(1);
    if (m_text.startsWith(u'*') && !rest.contains(u'*') && !rest.contains(u'?')) {
        m_form = Form::Ending;
        m_text = rest.toString();
    }
}

bool Wildcard::Matches(QStringView name) const
{
    switch (m_form) {
    case Form::Everything:
        return true;
    case Form::Ending:
        return EndsWith(name, m_text);
    case Form::General:
        break;
    }
    return !m_text.isEmpty() && MatchesGeneral(name, m_text);
}

} // namespace wb
