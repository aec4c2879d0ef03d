#include <gmock/gmock.h>

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <algorithm>
#include <numeric>
#include <random>
#include <vector>

#include "views/settings/keyed_list_model.h"

namespace varnhold::testing {
namespace {

using ::testing::ElementsAre;

// A list of letters, with the tester of the toolkit watching each step.
struct Letters {
    KeyedListModel model{{"letter", "weight"}};
    QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
    QSignalSpy inserts{&model, &QAbstractItemModel::rowsInserted};
    QSignalSpy removes{&model, &QAbstractItemModel::rowsRemoved};
    QSignalSpy moves{&model, &QAbstractItemModel::rowsMoved};
    QSignalSpy changes{&model, &QAbstractItemModel::dataChanged};
    QSignalSpy resets{&model, &QAbstractItemModel::modelReset};

    explicit Letters(const QString& first) { show(first); }

    void show(const QString& letters, int weight = 1) {
        for (QSignalSpy* spy : {&inserts, &removes, &moves, &changes, &resets}) {
            spy->clear();
        }
        std::vector<KeyedListModel::Row> rows;
        for (const QChar letter : letters) {
            rows.push_back({letter, {QString(letter), weight}});
        }
        model.sync(std::move(rows));
    }

    [[nodiscard]] QString shown() const {
        QString letters;
        for (int row = 0; row < model.count(); ++row) {
            letters += model.value(row, QStringLiteral("letter")).toString();
        }
        return letters;
    }

    [[nodiscard]] std::vector<qsizetype> steps() const {
        return {inserts.size(), removes.size(), moves.size(), changes.size(), resets.size()};
    }
};

TEST(KeyedListModel, TakesWhatIsNewAndLetsGoOfWhatIsGone) {
    Letters letters(QStringLiteral("abcd"));
    letters.show(QStringLiteral("axcd"));
    EXPECT_EQ(letters.shown(), QStringLiteral("axcd"));
    EXPECT_THAT(letters.steps(), ElementsAre(1, 1, 0, 0, 0));
}

TEST(KeyedListModel, MovesTheOneRowThatWasMoved) {
    Letters letters(QStringLiteral("abcdefgh"));
    letters.show(QStringLiteral("bcdefgha"));
    EXPECT_EQ(letters.shown(), QStringLiteral("bcdefgha"));
    EXPECT_THAT(letters.steps(), ElementsAre(0, 0, 1, 0, 0));
    letters.show(QStringLiteral("habcdefg"));
    EXPECT_EQ(letters.shown(), QStringLiteral("habcdefg"));
}

TEST(KeyedListModel, SaysWhichValuesChanged) {
    Letters letters(QStringLiteral("ab"));
    letters.show(QStringLiteral("ab"), 2);
    EXPECT_THAT(letters.steps(), ElementsAre(0, 0, 0, 2, 0));
    const auto roles = letters.changes.front().at(2).value<QList<int>>();
    ASSERT_EQ(roles.size(), 1);
    EXPECT_EQ(letters.model.roleNames().value(roles.front()), QByteArray("weight"));
}

TEST(KeyedListModel, DoesNothingWhereNothingChanged) {
    Letters letters(QStringLiteral("abc"));
    letters.show(QStringLiteral("abc"));
    EXPECT_THAT(letters.steps(), ElementsAre(0, 0, 0, 0, 0));
}

TEST(KeyedListModel, KeepsRowsOfOneKeyApart) {
    Letters letters(QStringLiteral("aba"));
    EXPECT_EQ(letters.shown(), QStringLiteral("aba"));
    letters.show(QStringLiteral("aab"));
    EXPECT_EQ(letters.shown(), QStringLiteral("aab"));
}

TEST(KeyedListModel, GetsFromAnyOrderToAnyOther) {
    std::mt19937 random(20261121);
    QString alphabet(26, Qt::Uninitialized);
    std::iota(alphabet.begin(), alphabet.end(), char16_t(97));
    Letters letters(alphabet);
    for (int turn = 0; turn < 300; ++turn) {
        QString wanted = alphabet;
        std::shuffle(wanted.begin(), wanted.end(), random);
        wanted.truncate(static_cast<int>(random() % 27));
        letters.show(wanted);
        ASSERT_EQ(letters.shown(), wanted);
        ASSERT_EQ(letters.resets.size(), 0);
    }
}

} // namespace
} // namespace varnhold::testing
