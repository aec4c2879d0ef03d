#pragma once

#include <cstdint>
#include <deque>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "editing.h"
#include "rules.h"
#include "support/generator.h"

namespace varnhold::testing {

// The real settings state and the rules, put through the same random edits and compared after each.
class RandomEdits {
public:
    explicit RandomEdits(std::uint64_t seed);

    // One random edit; gives its name.
    std::string step();

    // What differs between the state, its announcements, its files and the rules; empty if nothing.
    [[nodiscard]] std::string difference();

private:
    void dropSomething();
    void dropLate();
    void deliverLate();
    void dragAboutAndRelease();
    void dropOnLibrary();
    void dropBot();
    void unassignBot();
    void connectOrDisconnect();
    void editFileByHand();
    void removeRowByHand();
    void restockLibrary();
    void deleteFromLibrary();
    void letTimePass();

    [[nodiscard]] TargetList anyList();
    [[nodiscard]] const AIModelItem* anyRow();
    [[nodiscard]] std::string anyPayload();
    [[nodiscard]] std::string anyLabel();
    [[nodiscard]] std::optional<std::size_t> anyPlace();
    [[nodiscard]] Rows anyStock(bool forFile);
    [[nodiscard]] std::string givenUid(TargetList list, std::size_t place);
    void adoptByHand();
    [[nodiscard]] std::string fileDifference() const;
    [[nodiscard]] std::vector<std::string> checkedIds() const;

    struct Late {
        platform::PayloadReceiver receiver;
        std::string payload;
        TargetList list;
        std::optional<std::size_t> at;
    };

    Generator random_;
    Editing real_;
    Rules rules_;
    std::deque<Late> late_;
    std::string twin_; // uid that was last put into a second place
    std::set<std::string> given_;
    bool wellGiven_ = true;
    int count_ = 0;
};

} // namespace varnhold::testing
