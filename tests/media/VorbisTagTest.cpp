#include "media/VorbisTag.h"
#include "media/FullData.h"
#include "platform/Drives.h"
#include "platform/Files.h"

#include <QTemporaryDir>
#include <QTest>
#include <QtEndian>

using namespace Qt::StringLiterals;

class VorbisTagTest : public QObject
{
    Q_OBJECT

    const QTemporaryDir folder;
    const QString path = FromHostPath(folder.filePath(u"a.ogg"_s));
    VorbisTag tag;

    static QByteArray Counted(const QByteArray &text)
    {
        QByteArray length(4, '\0');
        qToLittleEndian(static_cast<quint32>(text.size()), length.data());
        return length + text;
    }

    /// A comment header behind 58 bytes of a first page, then the setup header and bytes that look like audio.
    static QByteArray Ogg(const QByteArrayList &comments, qsizetype vendor = 29, qsizetype size = 4096)
    {
        QByteArray bytes = "OggS" + QByteArray(54, '\2') + "\3vorbis" + Counted(QByteArray(vendor, 'V'));
        bytes += QByteArray(4, '\0');
        for (const QByteArray &comment : comments)
            bytes += Counted(comment);
        bytes += "\1\5vorbis";
        return bytes + QByteArray(size - bytes.size(), 'x');
    }

    /// What was read of these bytes: the fields in their order, or the error.
    QString Read(const QByteArray &content)
    {
        if (!WriteWholeFile(path, content))
            return u"not written"_s;
        if (!ReadVorbisTag(path, tag))
            return tag.ErrorMessage;
        const QStringList texts{tag.Title, tag.Artist, tag.Album, tag.Genre, tag.Date, tag.Comment, tag.EncodedUsing};
        return tag.ErrorMessage + texts.join(u'|') + u'#' + QString::number(tag.TrackNumber);
    }

private Q_SLOTS:
    void ReadsFields()
    {
        const std::pair<QByteArrayList, QString> cases[] = {
            {{"ENCODED_USING=e", "TRACKNUMBER=7", "COMMENT=c", "GENRE=g", "DATE=d", "ALBUM=b", "ARTIST=a", "TITLE=t"},
             u"t|a|b|g|d|c|e#7"_s},
            {{"TITLE=", "ARTIST="}, u"||||||#0"_s},
            {{"title=small", "SUBTITLE=long", "TITLE=first"}, u"long||||||#0"_s},
            {{"TITLE=\xC3\x9C \xE2\x82\xAC", "ARTIST=Caf\xE9 \x80", "x"}, u"\u00DC \u20AC|Caf\u00E9 \u20AC|||||#0"_s},
            {{"TITLE=" + QByteArray(200, 't'), "ARTIST=a"}, QString(200, u't') + u"|a|||||#0"_s},
            {{"title=small"}, u"No tag information exists!"_s},
            // A length whose lowest byte is zero: the value would end before it starts.
            {{"TITLE=", "", "x"}, u"Vorbis header not closed!"_s},
            {{"TITLE=" + QByteArray(2100, 't')}, u"Vorbis header not closed!"_s},
        };
        for (const auto &[comments, fields] : cases) {
            QCOMPARE(Read(Ogg(comments, 29, 8192)), fields);
            QCOMPARE(Read(Ogg(comments, 32, 8192)), fields);
        }
    }

    void ReadsTheLeadingNumber()
    {
        const std::pair<QByteArray, QString> cases[] = {
            {"07/12", u"7"_s}, {" +12. x", u"12"_s}, {"2.5", u"2"_s}, {"3.5", u"4"_s},         {"-.6", u"-1"_s},
            {"1e3", u"1"_s},   {"x9", u"0"_s},       {"inf", u"0"_s}, {"32767.4", u"32767"_s}, {"-32768", u"-32768"_s},
        };
        for (const auto &[value, number] : cases)
            QCOMPARE(Read(Ogg({"TRACKNUMBER=" + value})), u"||||||#"_s + number);
        for (const QByteArray &value : {QByteArray("32767.5"), QByteArray("-32769"), QByteArray(400, '9')})
            QCOMPARE(Read(Ogg({"TRACKNUMBER=" + value + '.', "TITLE=t"})), u"Vorbis header not closed!"_s);
        QCOMPARE(tag.Title, u"t"_s);
    }

    void LooksForTheHeader()
    {
        const QByteArray whole = Ogg({"TITLE=t"}, 29, 6144);
        const QByteArray late = QByteArray(2040, 'x') + whole.mid(58);
        const std::pair<QByteArray, QString> cases[] = {
            {whole.first(4096), u"t||||||#0"_s},
            // Of a chunk with no whole one behind it nothing is seen.
            {whole.first(4095), u"Vorbis header not found!"_s},
            {whole.first(2047), u"Error processing file."_s},
            {QByteArray(), u"Error processing file."_s},
            {Ogg({"TITLE=t"}, 30), u"Vorbis header not found!"_s},
            {late, u"t||||||#0"_s},
            // Cut by the border of two chunks.
            {'x' + late, u"Vorbis header not found!"_s},
            // The place in the second chunk is read from the front of the file.
            {QByteArray(2048, 'x') + whole, u"Vorbis header not closed!"_s},
            {Ogg({"TITLE=front"}, 30, 2048) + whole, u"front||||||#0"_s},
            {"\3vorbis-" + whole, u"t||||||#0"_s},
            {QByteArray(whole).replace("\5vorbis", "\4vorbis"), u"Vorbis header not closed!"_s},
        };
        for (const auto &[content, fields] : cases)
            QCOMPARE(Read(content), fields);
        for (const QString &name : {folder.path(), folder.filePath(u"gone.ogg"_s), QString()}) {
            QVERIFY(!ReadVorbisTag(FromHostPath(name), tag));
            QCOMPARE(tag.ErrorMessage, u"Error opening file! "_s);
            QCOMPARE(tag.Title, QString());
        }
    }

    void ReadsWhatAnEncoderWrote()
    {
        QByteArray content;
        QVERIFY(ReadWholeFile(FromHostPath(QStringLiteral(TEST_DATA "/tagged.ogg")), content));
        QCOMPARE(Read(content), u"Vorbis header not found!"_s);
        // With full data another reader takes its place, where it finds more.
        SetFullData(true);
        const QString fields = Read(content);
        const QString damaged = Read(content.first(100));
        const QString own = Read(Ogg({"TITLE=t"}));
        SetFullData(false);
        QCOMPARE(fields, u"Slow Harbour|The Lanterns|||2004||#0"_s);
        QCOMPARE(damaged + own, u"Error processing file.t||||||#0"_s);
        // The same with the vendor text of an encoder of another year.
        const qsizetype vendor = content.indexOf("\3vorbis") + 7;
        content.replace(vendor, 4 + 52, Counted("Xiph.Org libVorbis I 20020717"));
        QCOMPARE(Read(content.replace("artist=", "ARTIST=")), u"|The Lanterns|||2004||#0"_s);
    }
};

QTEST_GUILESS_MAIN(VorbisTagTest)
#include "VorbisTagTest.moc"
