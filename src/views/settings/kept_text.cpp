#include "views/settings/kept_text.h"

#include <algorithm>
#include <utility>

namespace varnhold {

namespace {

constexpr std::size_t mostRemovals = 32;
constexpr qsizetype longestRemoval = 1 << 20;

bool isPair(const QString& text, qsizetype at) {
    return text[at] == u'\r' && at + 1 < text.size() && text[at + 1] == u'\n';
}

bool endsLine(QChar sign) {
    constexpr char16_t frameBegins = 0xfdd0; // as the editor has it
    constexpr char16_t frameEnds = 0xfdd1;
    return sign == u'\n' || sign == u'\r' || sign == QChar::ParagraphSeparator ||
           sign == frameBegins || sign == frameEnds;
}

// Where the text's sign begins that stands at a place of its form.
qsizetype placeInText(const QString& text, qsizetype inForm) {
    qsizetype at = 0;
    for (; inForm > 0 && at < text.size(); --inForm) {
        at += isPair(text, at) ? 2 : 1;
    }
    return at;
}

// How many signs at both ends of a form an edit has left alone.
struct Edit {
    qsizetype head = 0;
    qsizetype tail = 0;
};

qsizetype commonTail(const QString& one, const QString& other, qsizetype atMost) {
    qsizetype tail = 0;
    while (tail < atMost && one[one.size() - 1 - tail] == other[other.size() - 1 - tail]) {
        ++tail;
    }
    return tail;
}

// The least edit that leads from one form to the other; of several such, the one that begins at
// that place.
Edit editBetween(const QString& before, const QString& after, qsizetype at) {
    const qsizetype shorter = std::min(before.size(), after.size());
    Edit least;
    while (least.head < shorter && before[least.head] == after[least.head]) {
        ++least.head;
    }
    least.tail = commonTail(before, after, shorter - least.head);
    if (at >= 0 && at < least.head) {
        const Edit told{at, commonTail(before, after, shorter - at)};
        if (told.head + told.tail == least.head + least.tail) {
            return told;
        }
    }
    return least;
}

} // namespace

QString KeptText::formOf(const QString& text) {
    QString form;
    form.reserve(text.size());
    for (qsizetype at = 0; at < text.size(); ++at) {
        at += isPair(text, at) ? 1 : 0;
        form.append(endsLine(text[at]) ? QChar(QChar::ParagraphSeparator) : text[at]);
    }
    return form;
}

void KeptText::follow(const QString& form, qsizetype at) {
    if (form == form_) {
        return;
    }
    const Edit edit = editBetween(form_, form, at);
    const qsizetype from = placeInText(text_, edit.head);
    const qsizetype to = placeInText(text_, form_.size() - edit.tail);
    const QString inserted = form.mid(edit.head, form.size() - edit.tail - edit.head);
    const Removal removed{.form = form_.mid(edit.head, form_.size() - edit.tail - edit.head),
                          .text = text_.mid(from, to - from),
                          .at = edit.head,
                          .alone = inserted.isEmpty()};
    put(textOfInserted(inserted), from, to);
    form_ = form;
    if (removed.form.isEmpty()) {
        removesOn_ = false;
    } else {
        remember(removed);
    }
}

void KeptText::put(const QString& inserted, qsizetype from, qsizetype to) {
    text_.replace(from, to - from, inserted);
    separate(from + inserted.size());
    const bool stands = from + 1 >= text_.size() || text_[from + 1] != u'\n';
    if (!inserted.isEmpty() && stands && meet(from)) {
        text_[from] = u'\r'; // rather what is new than what stood there
    }
    separate(from);
}

bool KeptText::meet(qsizetype at) const {
    return at > 0 && at < text_.size() && text_[at - 1] == u'\r' && text_[at] == u'\n';
}

// What comes to stand side by side must not become one end of a line where the form has two.
void KeptText::separate(qsizetype at) {
    for (; meet(at); --at) {
        text_[at - 1] = u'\n'; // which may meet the one before in turn
    }
}

// Signs that go one by one come back together.
void KeptText::remember(const Removal& removal) {
    const bool goesOn = std::exchange(removesOn_, removal.alone) && removal.alone;
    if (removal.form.size() > longestRemoval) {
        return;
    }
    if (goesOn && !removals_.empty()) {
        Removal& last = removals_.back();
        const bool before = removal.at + removal.form.size() == last.at;
        if (before || removal.at == last.at) {
            last.form = before ? removal.form + last.form : last.form + removal.form;
            last.text = before ? removal.text + last.text : last.text + removal.text;
            last.at = removal.at;
            return;
        }
    }
    removals_.push_back(removal);
    if (removals_.size() > mostRemovals) {
        removals_.erase(removals_.begin());
    }
}

QString KeptText::textOfInserted(const QString& form) const {
    const auto known = std::find_if(removals_.rbegin(), removals_.rend(), [&](const Removal& each) {
        return each.form == form && formOf(each.text) == form;
    });
    if (known != removals_.rend()) {
        return known->text;
    }
    QString text = form;
    return text.replace(QChar::ParagraphSeparator, u'\n');
}

} // namespace varnhold
