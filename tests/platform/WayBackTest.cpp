#include "platform/PlatformTests.h"

#include "platform/DiskFile.h"
#include "platform/WayBack.h"

#include <QTest>

using namespace Qt::StringLiterals;

class WayBackTest : public FolderTest
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { KeepWaysBack({}); }

    void TheNextStartTakesBackWhatStands()
    {
        const QString notes = In(u"notes"_s);
        KeepWaysBack(notes);
        QVERIFY(Write(u"stretches"_s, "0123456789") && Write(u"another"_s, "old"));
        const WayBack::Stretch stretches[] = {{1, 2}, {6, 4}};
        for (const QString &name : {u"stretches"_s, u"another"_s}) {
            DiskFile file;
            QVERIFY(file.Open(In(name)) &&
                    WayBack().NoteStretches(In(name), file, std::span(stretches).first(name == u"another" ? 1 : 2)));
            QVERIFY(file.WriteAt(1, "xx") && file.Resize(6));
        }
        QVERIFY(Write(u"another"_s, "theirs"));
        // More than is copied at once.
        const QByteArray much = QByteArray(300'000, 'a') + QByteArray(300'000, 'b');
        {
            DiskFile file;
            const WayBack::Stretch whole[] = {{0, much.size()}};
            QVERIFY(Write(u"much"_s, much) && file.Open(In(u"much"_s)));
            QVERIFY(WayBack().NoteStretches(In(u"much"_s), file, whole) && file.Resize(0));
        }
        // The first note of a file is the oldest.
        for (const char *content : {"former", "later"})
            QVERIFY(WayBack().NoteFormer(In(u"former"_s), true, content));
        QVERIFY(WayBack().NoteFormer(In(u"none"_s), false, {}) && WayBack().NoteFormer(In(u"gone\\x"_s), true, "x"));
        WayBack done;
        QVERIFY(done.NoteFormer(In(u"done"_s), true, "old"));
        done.Drop();
        for (const QString &name : {u"former"_s, u"none"_s, u"done"_s, u".vantrel-1.tmp"_s, u"song.tmp"_s, u"away"_s})
            QVERIFY(Write(name, "new"));
        QVERIFY(WayBack().NoteCopy(In(u".vantrel-1.tmp"_s)) && WayBack().NoteCopy(In(u"song.tmp"_s)));
        QVERIFY(WayBack().NoteRename(In(u"away"_s), In(u"back"_s)));
        // What is there no more needs no way back.
        QVERIFY(WayBack().NoteRename(In(u"nowhere"_s), In(u"x"_s)) && Write(u"gone song"_s, "0123456789"));
        {
            DiskFile file;
            QVERIFY(file.Open(In(u"gone song"_s)) && WayBack().NoteStretches(In(u"gone song"_s), file, stretches));
        }
        QVERIFY(DeleteFile(In(u"gone song"_s)));
        KeepWaysBack({});
        // A disk that is not there keeps its notes for a later start.
        for (const int left : {1, 0}) {
            KeepWaysBack(notes);
            KeepWaysBack({});
            // What has been taken back once is not again.
            QVERIFY(Content(u"former"_s) == (left == 1 ? "former" : "since") && Write(u"former"_s, "since"));
            FolderEntries entries;
            QVERIFY(ListFolder(notes, entries) && entries.Files.size() == left);
            QVERIFY(EnsureFolder(In(u"gone"_s)));
        }
        QVERIFY(Content(u"much"_s) == much && DeleteFile(In(u"much"_s)));
        const QStringList wanted{u"another=theirs"_s, u"back=new"_s,     u"done=new"_s,
                                 u"former=since"_s,   u"song.tmp=new"_s, u"stretches=0123456789"_s};
        QStringList found;
        for (const QString &name : Listed())
            found += Content(name) == "unreadable" ? QStringList()
                                                   : QStringList{name + u'=' + QString::fromLatin1(Content(name))};
        QCOMPARE(found.join(u' '), wanted.join(u' '));
        QCOMPARE(Content(u"gone\\x"_s), "x"_ba);
    }

    void WhatAnotherProgramHasWrittenStays()
    {
        KeepWaysBack(In(u"notes"_s));
        const auto make = [this](const QString &name, const QByteArray &content, const QByteArray &former) {
            WayBack note;
            const bool noted = note.NoteFormer(In(name), !former.isNull(), former) && Write(name, content);
            note.NoteMade(DiskFactsOf(In(name)));
            return noted;
        };
        QVERIFY(make(u"made"_s, "new", {}) && make(u"replaced"_s, "new", "old") && make(u"deleted"_s, "new", "old"));
        QVERIFY(make(u"their made"_s, "new", {}) && make(u"theirs"_s, "new", "old"));
        QVERIFY(Write(u"their made"_s, "theirs") && Write(u"theirs"_s, "theirs") && DeleteFile(In(u"deleted"_s)));
        // Made twice, whole; and with its second way back gone already.
        QVERIFY(make(u"twice"_s, "new", "old") && make(u"twice"_s, "newer", "new"));
        QVERIFY(make(u"half back"_s, "new", "old") && make(u"half back"_s, "newer", "new"));
        QVERIFY(Write(u"half back"_s, "new"));
        for (const QString &notes : {QString(), In(u"notes"_s), QString()})
            KeepWaysBack(notes);
        QByteArrayList found;
        for (const QString &name : Listed())
            found +=
                Content(name) == "unreadable" ? QByteArrayList() : QByteArrayList{name.toUtf8() + '=' + Content(name)};
        QCOMPARE(found.join(' '), "deleted=old half back=old replaced=old their made=theirs theirs=theirs twice=old");
    }

    void WhatCouldNotBeTakenBackIsTriedAgain()
    {
        KeepWaysBack(In(u"notes"_s));
        WayBack stands;
        WayBack abandoned;
        for (const QString &name : {u".vantrel-1.tmp"_s, u".vantrel-2.tmp"_s})
            QVERIFY(Write(name, "new"));
        QVERIFY(stands.NoteCopy(In(u".vantrel-1.tmp"_s)) && abandoned.NoteCopy(In(u".vantrel-2.tmp"_s)));
        abandoned.Abandon();
        WayBack::GoAbandoned();
        stands.Drop();
        QVERIFY(Content(u".vantrel-1.tmp"_s) == "new" && Content(u".vantrel-2.tmp"_s) == "unreadable");
        // A copy on a disk that comes back later.
        QVERIFY(WayBack().NoteCopy(In(u"gone\\.vantrel-3.tmp"_s)));
        for (int start = 0; start < 2; ++start) {
            KeepWaysBack({});
            KeepWaysBack(In(u"notes"_s));
            QVERIFY(start == 1 || (EnsureFolder(In(u"gone"_s)) && Write(u"gone\\.vantrel-3.tmp"_s, "new")));
        }
        QCOMPARE(Content(u"gone\\.vantrel-3.tmp"_s), "unreadable"_ba);
    }

    void NotesTakeNoMoreThanTheyNeed()
    {
        const QString notes = In(u"notes"_s);
        KeepWaysBack(notes);
        const QByteArray much(1'000'000, 'x');
        WayBack first;
        QVERIFY(first.NoteFormer(In(u"first"_s), true, "old"));
        for (int i = 0; i < 5; ++i) {
            WayBack note;
            QVERIFY(note.NoteFormer(In(u"second"_s), true, much));
            note.Drop();
        }
        QVERIFY(WayBack().NoteFormer(In(u"third"_s), true, "old"));
        FolderEntries entries;
        QVERIFY(ListFolder(notes, entries) && entries.Files.size() == 1);
        QVERIFY(ExamineFile(notes + u'\\' + entries.Files[0]).Size < much.size());
        for (const QString &next : {QString(), notes})
            KeepWaysBack(next);
        QCOMPARE(Listed().join(u' '), u"first third notes"_s);
    }
};

static const RegisterTest<WayBackTest> registered;
#include "WayBackTest.moc"
