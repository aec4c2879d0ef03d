#pragma once

#include <QString>
#include <vector>

namespace varnhold {

// A text beside the form in which an editor holds it. The editor knows one sign for the end of a
// line; the text may know four, and what nobody has edited must stay as it was. So an edit of the
// editor's form is carried over to the text, and to no more of it than was edited. Any thread.
class KeptText {
public:
    KeptText() = default;
    explicit KeptText(const QString& text) : text_(text), form_(formOf(text)) {}

    [[nodiscard]] const QString& text() const { return text_; }
    // As QTextDocument::toRawText() gives it.
    [[nodiscard]] const QString& form() const { return form_; }

    // The editor holds another form now. `at`: where in it the edit began, to tell apart what looks
    // the same on both sides of it.
    void follow(const QString& form, qsizetype at);

    // The form that an editor gives to a text: each end of a line is a paragraph separator.
    [[nodiscard]] static QString formOf(const QString& text);

private:
    // What an edit took away, to be found again when the edit is undone.
    struct Removal {
        QString form;
        QString text;
        qsizetype at = 0;
        bool alone = false; // nothing came in its place
    };

    void put(const QString& inserted, qsizetype from, qsizetype to);
    [[nodiscard]] bool meet(qsizetype at) const;
    void separate(qsizetype at);
    void remember(const Removal& removal);
    [[nodiscard]] QString textOfInserted(const QString& form) const;

    QString text_;
    QString form_;
    std::vector<Removal> removals_; // the latest at the end
    bool removesOn_ = false;        // the last edit was a removal alone
};

} // namespace varnhold
