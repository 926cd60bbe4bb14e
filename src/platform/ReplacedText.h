#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <memory>

class ReplacedFile;

/// A text file that is written piece by piece and replaced whole or not at all, as by WriteWholeFile, in the encoding
/// of EncodeText. Whether that takes a byte order mark is known only at its end, and memory does not grow with the
/// pieces. Destroying it before Commit leaves the old file as it was.
class ReplacedText
{
public:
    enum class Kind {
        Plain,
        /// A page for a browser: what is UTF-8 and goes beyond ASCII has a mark, so that it is read right.
        Page,
    };

    explicit ReplacedText(Kind kindOfText);
    ~ReplacedText();
    ReplacedText(const ReplacedText &) = delete;
    ReplacedText &operator=(const ReplacedText &) = delete;

    bool Begin(const QString &pathOfFile);
    /// A piece ends with a whole character. Once this has failed, so does all that follows.
    bool Append(const QString &piece);
    bool Commit();

private:
    bool AppendBytes(const QByteArray &bytes);
    /// Begins anew with the mark and what has been written so far.
    bool Mark();

    Kind kind;
    QString path;
    /// None when nothing can be written.
    std::unique_ptr<ReplacedFile> file;
    bool marked = false;
    qsizetype unflushed = 0;
    /// What was written before the mark, in pieces that can each be decoded by itself.
    QList<qsizetype> sizes;
};
