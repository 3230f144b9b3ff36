// See the header. Any thread.
//
// Only what is listed passes, and only in the plainest spelling, so that nothing hangs on how Qt's parser
// takes the rest. Tables and lists aren't listed: each one inside another doubles the time of the layout.
#include "common/richtext.h"

#include <QLatin1String>

namespace {

const char* const TAGS[] = {"html", "head", "body", "p",   "br",  "b",      "i",    "u",   "s",
                            "em",   "big",  "sub",  "sup", "div", "span",   "font", "img", "strong",
                            "h1",   "h2",   "h3",   "h4",  "hr",  "center", "small"};
const char* const ATTRIBUTES[] = {"width", "height", "align", "size", "color"};
const int VALUE_MAX = 16; // characters

template <int COUNT> bool isListed(const char* const (&list)[COUNT], const QString& word)
{
    const QString lower = word.toLower();
    for (const char* entry : list)
        if (lower == QLatin1String(entry))
            return true;
    return false;
}

// ASCII letters and digits, and what a number or a colour has beside them.
bool isOf(QChar character, const char* others)
{
    const ushort code = character.unicode();
    return (code >= 'a' && code <= 'z') || (code >= 'A' && code <= 'Z') || (code >= '0' && code <= '9') ||
           (code != 0 && code < 0x80 && QByteArray(others).contains(static_cast<char>(code)));
}

// Reads a tag from its "<" on.
class Tag {
public:
    Tag(const QString& all, int begin) : text(all), at(begin + 1), harmless(true)
    {
        const bool closing = take('/');
        harmless = isListed(TAGS, word("")) && harmless;
        if (!closing)
            while (takeBlanks() && isOf(peek(), ""))
                takeAttribute();
        take('/');
        harmless = take('>') && harmless;
    }
    bool isHarmless() const { return harmless; }
    int end() const { return at; }

private:
    QChar peek() const { return at < text.size() ? text.at(at) : QChar(); }
    bool take(char character)
    {
        if (peek() != QLatin1Char(character))
            return false;
        ++at;
        return true;
    }
    bool takeBlanks()
    {
        const int before = at;
        while (take(' ')) {
        }
        return at > before;
    }
    QString word(const char* others)
    {
        const int before = at;
        while (at < text.size() && isOf(text.at(at), others))
            ++at;
        return text.mid(before, at - before);
    }
    void takeAttribute()
    {
        harmless = isListed(ATTRIBUTES, word("")) && harmless;
        if (!take('='))
            return;
        const bool quoted = take('"');
        harmless = word("#%+-").size() <= VALUE_MAX && harmless;
        harmless = (!quoted || take('"')) && harmless;
    }

    const QString& text;
    int at;
    bool harmless;
};

// Where a tag that isn't harmless ends, as far as anybody can tell: behind its ">", or in front of the next
// "<".
int endOfOther(const QString& text, int begin)
{
    for (int at = begin + 1; at < text.size(); ++at) {
        if (text.at(at) == QLatin1Char('>'))
            return at + 1;
        if (text.at(at) == QLatin1Char('<'))
            return at;
    }
    return text.size();
}

// A "<" with anything else behind it is one of the words.
bool beginsTag(const QString& text, int at)
{
    if (at + 1 >= text.size())
        return false;
    const QChar next = text.at(at + 1);
    return next.isLetter() || next == QLatin1Char('/') || next == QLatin1Char('!') ||
           next == QLatin1Char('?');
}

} // namespace

QString harmlessRichText(const QString& text)
{
    QString result;
    for (int at = 0; at < text.size();) {
        if (text.at(at) != QLatin1Char('<')) {
            result += text.at(at++);
            continue;
        }
        if (!beginsTag(text, at)) {
            result += QLatin1String("&lt;");
            ++at;
            continue;
        }
        const Tag tag(text, at);
        const int end = tag.isHarmless() ? tag.end() : endOfOther(text, at);
        if (tag.isHarmless())
            result += text.mid(at, end - at);
        at = end;
    }
    return result;
}
