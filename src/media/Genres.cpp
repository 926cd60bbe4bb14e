#include "media/Genres.h"

#include "media/TagLibText.h"

#include <taglib/id3v1genres.h>

using namespace Qt::StringLiterals;

namespace
{
bool IsReference(const QString &word)
{
    bool isNumber = false;
    word.toUInt(&isNumber);
    return isNumber || word == u"RX" || word == u"CR";
}

QString NameOf(const QString &word)
{
    bool isNumber = false;
    const int number = word.toInt(&isNumber);
    if (isNumber && word.front().isDigit() && number < GenreNames().size())
        return GenreNames().at(number);
    if (word == u"RX")
        return u"Remix"_s;
    if (word == u"CR")
        return u"Cover"_s;
    return word;
}

/// "(17)(Pop)More" as the words 17, Pop and More; a doubled parenthesis stands for one and starts plain text, and so
/// does a first one around a word that means no other: "(Live) take".
QStringList Words(QStringView text)
{
    QStringList words;
    while (text.startsWith(u'(') && !text.startsWith(u"((")) {
        const qsizetype end = text.indexOf(u')');
        if (end < 0 || (words.isEmpty() && !IsReference(text.sliced(1, end - 1).toString())))
            break;
        words.append(text.sliced(1, end - 1).toString());
        text = text.sliced(end + 1);
    }
    if (text.startsWith(u"(("))
        text = text.sliced(1);
    words.append(text.toString());
    return words;
}
} // namespace

const QStringList &GenreNames()
{
    static const QStringList names = [] {
        QStringList list;
        for (const TagLib::String &name : TagLib::ID3v1::genreList())
            list.append(FromTagLib(name));
        return list;
    }();
    return names;
}

QString ShownGenre(const QString &text)
{
    QStringList names;
    for (const QString &word : Words(text)) {
        const QString name = word.isEmpty() ? word : NameOf(word);
        if (!name.isEmpty())
            names.append(name);
    }
    names.removeDuplicates();
    return names.join(u'/');
}
