#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <optional>

#include <QPointer>
#include <QTest>

#include "desktop/fake_file_portal.h"
#include "private_bus.h"
#include "views/desktop/file_portal.h"

namespace varnhold::testing {
namespace {

struct FilePortals : ::testing::Test {
    PrivateBus bus;
    FakeFilePortal portal{bus.answerer()};
    QObject owner;
    std::optional<QStringList> chosen;
    int answers = 0;
    bool cancelled = false;
    bool failed = false;
    QPointer<FilePortal> asking;

    void ask(const FileQuestion& question = {}) {
        asking = new FilePortal(bus.asker(), question,
                                {.chosen =
                                     [this](const QStringList& paths) {
                                         ++answers;
                                         chosen = paths;
                                     },
                                 .cancelled =
                                     [this] {
                                         ++answers;
                                         cancelled = true;
                                     },
                                 .failed =
                                     [this] {
                                         ++answers;
                                         failed = true;
                                     }},
                                &owner);
    }
    bool isAsked() {
        return QTest::qWaitFor([this] { return !portal.path.isEmpty(); });
    }
    // The one answer, after which nothing is left.
    void awaitAnswer() {
        EXPECT_TRUE(QTest::qWaitFor([this] { return answers > 0 && asking.isNull(); }));
        EXPECT_EQ(answers, 1);
    }
    void askAndRespond(uint code, const QStringList& uris = {}) {
        ASSERT_TRUE(portal.offer());
        ask();
        ASSERT_TRUE(isAsked());
        portal.respond(code, uris);
        awaitAnswer();
    }
};

QVariant option(const FakeFilePortal& portal, const char* name) {
    return portal.options.value(QString::fromLatin1(name));
}

TEST_F(FilePortals, AskForFilesWithTheWordsOfTheQuestion) {
    ASSERT_TRUE(portal.offer());
    ask({.title = QStringLiteral("Attach File / Folder"),
         .acceptLabel = QStringLiteral("Attach"),
         .parentWindow = QStringLiteral("x11:2a")});
    ASSERT_TRUE(isAsked());
    EXPECT_EQ(portal.parent, QStringLiteral("x11:2a"));
    EXPECT_EQ(portal.title, QStringLiteral("Attach File / Folder"));
    EXPECT_EQ(option(portal, "accept_label"), QStringLiteral("Attach"));
    EXPECT_EQ(option(portal, "modal"), true);
    EXPECT_EQ(option(portal, "multiple"), true);
    EXPECT_EQ(option(portal, "directory"), false);
}

TEST_F(FilePortals, AskForOneFolder) {
    ASSERT_TRUE(portal.offer());
    ask({.folder = true});
    ASSERT_TRUE(isAsked());
    EXPECT_EQ(option(portal, "multiple"), false);
    EXPECT_EQ(option(portal, "directory"), true);
}

TEST_F(FilePortals, TellAllThatWasChosen) {
    askAndRespond(0, {QStringLiteral("file:///home/a"), QStringLiteral("file:///home/b%20c")});
    EXPECT_EQ(chosen, QStringList({QStringLiteral("/home/a"), QStringLiteral("/home/b c")}));
    EXPECT_FALSE(portal.request.isClosed);
}

TEST_F(FilePortals, HearAnAnswerThatComesBeforeTheRequestsName) {
    ASSERT_TRUE(portal.offer());
    portal.asked = [this] { portal.respond(0, {QStringLiteral("file:///early")}); };
    ask();
    awaitAnswer();
    EXPECT_EQ(chosen, QStringList(QStringLiteral("/early")));
}

TEST_F(FilePortals, ListenWhereAnOldPortalAnswers) {
    portal.choosesPathItself = true;
    ASSERT_TRUE(portal.offer());
    ask();
    ASSERT_TRUE(isAsked());
    // Until the asker has heard of the path and listens there.
    EXPECT_TRUE(QTest::qWaitFor([this] {
        portal.respond(0, {QStringLiteral("file:///old")});
        QTest::qWait(10);
        return answers > 0;
    }));
    EXPECT_EQ(chosen, QStringList(QStringLiteral("/old")));
}

TEST_F(FilePortals, TellThatTheUserHasCancelled) {
    askAndRespond(1);
    EXPECT_TRUE(cancelled);
}

TEST_F(FilePortals, TakeNothingOfUseForNoChoice) {
    askAndRespond(0, {QStringLiteral("mtp://phone/a"), QStringLiteral("file:///%ff")});
    EXPECT_TRUE(cancelled);
}

TEST_F(FilePortals, FailWhereTheDialogEndsOtherwise) {
    askAndRespond(2);
    EXPECT_TRUE(failed);
}

TEST_F(FilePortals, FailWhereNoPortalIs) {
    ask();
    awaitAnswer();
    EXPECT_TRUE(failed);
}

TEST_F(FilePortals, FailWhereThePortalRefuses) {
    portal.refuses = true;
    ASSERT_TRUE(portal.offer());
    ask();
    awaitAnswer();
    EXPECT_TRUE(failed);
}

TEST_F(FilePortals, FailWhereThePortalKnowsNoFolders) {
    portal.version = 2;
    ASSERT_TRUE(portal.offer());
    ask({.folder = true});
    awaitAnswer();
    EXPECT_TRUE(failed);
    EXPECT_TRUE(portal.path.isEmpty());
}

TEST_F(FilePortals, FailWhenThePortalGoesWhileItAsks) {
    ASSERT_TRUE(portal.offer());
    ask();
    ASSERT_TRUE(isAsked());
    portal.vanish();
    awaitAnswer();
    EXPECT_TRUE(failed);
}

TEST_F(FilePortals, TakeTheDialogAwayWithTheirOwner) {
    ASSERT_TRUE(portal.offer());
    ask();
    ASSERT_TRUE(isAsked());
    delete asking;
    EXPECT_TRUE(QTest::qWaitFor([this] { return portal.request.isClosed; }));
    EXPECT_EQ(answers, 0);
}

QStringList pathsOf(const char* uri) {
    return localPaths({QString::fromUtf8(uri)});
}

TEST(LocalPaths, AreDecodedWhateverTheirNames) {
    const auto path = [](const char* text) { return QStringList(QString::fromUtf8(text)); };
    EXPECT_EQ(pathsOf("file:///a%20b/%C3%A4%C3%B6.txt"), path("/a b/äö.txt"));
    EXPECT_EQ(pathsOf("file:///ä"), path("/ä"));
    EXPECT_EQ(pathsOf("file:///two%0Alines"), path("/two\nlines"));
    EXPECT_EQ(pathsOf("file:///100%25%23%3F"), path("/100%#?"));
    EXPECT_EQ(pathsOf("file:///a+b#c?d"), path("/a+b#c?d"));
    EXPECT_EQ(pathsOf("FILE://localhost/a"), path("/a"));
    EXPECT_EQ(pathsOf("file:///folder/"), path("/folder"));
    EXPECT_EQ(pathsOf("file:///"), path("/"));
}

TEST(LocalPaths, LeaveOutWhatHasNone) {
    for (const char* uri : {"https://example.org/a", "file://elsewhere/a", "file:relative",
                            "file://", "", "file:///%ff%fe", "file:///a%00b", "/a"}) {
        EXPECT_TRUE(pathsOf(uri).isEmpty()) << uri;
    }
}

TEST(PortalName, IsEmptyWithoutAWindowOrXServer) {
    EXPECT_EQ(portalNameOf(nullptr), QString());
}

} // namespace
} // namespace varnhold::testing
