#include "views/settings/kept_text.h"

#include <gtest/gtest.h>

#include <random>

namespace varnhold::testing {
namespace {

using namespace Qt::StringLiterals;

const QString end(QChar::ParagraphSeparator);
const QString ofAllKinds = u"a\u00a0b\u2028c\r\nd\re\nf\u2029g"_s;

// The text as it is after an edit of its form.
struct Edited {
    KeptText kept;

    explicit Edited(const QString& text) : kept(text) {}
    Edited& replace(qsizetype at, qsizetype length, const QString& with) {
        kept.follow(QString(kept.form()).replace(at, length, with), at);
        return *this;
    }
    [[nodiscard]] const QString& text() const { return kept.text(); }
};

TEST(KeptText, HasTheFormOfAnEditorsText) {
    EXPECT_EQ(KeptText::formOf(ofAllKinds), u"a\u00a0b\u2028c\u2029d\u2029e\u2029f\u2029g"_s);
    EXPECT_EQ(KeptText::formOf(u"\r\r\n\n"_s), end + end + end);
}

TEST(KeptText, KeepsEverythingAroundWhatWasTyped) {
    for (qsizetype at = 0; at <= 13; ++at) {
        Edited edited(ofAllKinds);
        edited.replace(at, 0, u"x"_s);
        EXPECT_EQ(QString(edited.text()).remove(u'x'), ofAllKinds) << at;
        edited.replace(at, 1, QString());
        EXPECT_EQ(edited.text(), ofAllKinds) << at;
    }
}

TEST(KeptText, TakesAnEndOfALineThatIsTypedForALineFeed) {
    EXPECT_EQ(Edited(u"a\r\nb"_s).replace(1, 0, end).text(), u"a\n\r\nb"_s);
    EXPECT_EQ(Edited(u"a\r\nb"_s).replace(2, 0, end).text(), u"a\r\n\nb"_s);
}

TEST(KeptText, TakesAwayTheEndThatWasMeant) {
    EXPECT_EQ(Edited(u"a\r\n\n\rb"_s).replace(1, 1, {}).text(), u"a\n\rb"_s);
    EXPECT_EQ(Edited(u"a\r\n\n\rb"_s).replace(2, 1, {}).text(), u"a\r\n\rb"_s);
    EXPECT_EQ(Edited(u"a\r\n\n\rb"_s).replace(3, 1, {}).text(), u"a\r\n\nb"_s);
}

TEST(KeptText, MakesNoPairOfTwoEndsThatMeet) {
    EXPECT_EQ(Edited(u"a\rx\nb"_s).replace(2, 1, {}).text(), u"a\n\nb"_s);
    EXPECT_EQ(Edited(u"a\rx\nb"_s).replace(2, 1, end).text(), u"a\n\n\nb"_s);
    EXPECT_EQ(Edited(u"a\rb"_s).replace(2, 0, end).text(), u"a\r\rb"_s);
    EXPECT_EQ(Edited(u"a\rx\nb"_s).replace(1, 2, {}).replace(1, 0, end).text(), u"a\n\nb"_s);
}

TEST(KeptText, NeedsNoPlaceToKeepTheRest) {
    KeptText kept(ofAllKinds);
    kept.follow(QString(kept.form()).insert(8, u'x'), 0); // some editors tell of all they lay out
    EXPECT_EQ(kept.text(), QString(ofAllKinds).insert(9, u'x'));
    kept.follow(QString(kept.form()).remove(8, 1), -1);
    EXPECT_EQ(kept.text(), ofAllKinds);
}

TEST(KeptText, GivesBackWhatWasTakenAwayAtOnce) {
    Edited edited(ofAllKinds);
    const QString form = edited.kept.form();
    edited.replace(0, form.size(), {});
    EXPECT_EQ(edited.text(), QString());
    edited.replace(0, 0, form);
    EXPECT_EQ(edited.text(), ofAllKinds);
}

TEST(KeptText, GivesBackWhatWasTakenAwaySignBySign) {
    Edited edited(ofAllKinds);
    const QString form = edited.kept.form();
    for (qsizetype at = form.size() - 1; at >= 3; --at) { // backspace
        edited.replace(at, 1, {});
    }
    for (int times = 0; times < 3; ++times) { // delete
        edited.replace(0, 1, {});
    }
    edited.replace(0, 0, form.left(3)).replace(3, 0, form.mid(3));
    EXPECT_EQ(edited.text(), ofAllKinds);
}

TEST(KeptText, KeepsItsFormAndItsTextTogetherThroughAnyEdits) {
    std::mt19937 random(7); // NOLINT(bugprone-random-generator-seed): the same edits each time
    const auto upTo = [&](qsizetype most) {
        return static_cast<qsizetype>(random() % (static_cast<unsigned long>(most) + 1));
    };
    Edited edited(ofAllKinds.repeated(4));
    for (int edit = 0; edit < 2000; ++edit) {
        const qsizetype at = upTo(edited.kept.form().size());
        const qsizetype length = std::min<qsizetype>(upTo(3), edited.kept.form().size() - at);
        edited.replace(at, length, QString(u"x"_s + end).repeated(static_cast<int>(upTo(2))));
        ASSERT_EQ(KeptText::formOf(edited.text()), edited.kept.form()) << edit;
    }
}

} // namespace
} // namespace varnhold::testing
