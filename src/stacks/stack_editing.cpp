#include "stacks/stack_editing.h"

#include <utility>

namespace varnhold {

bool StackEditing::isDragging(const AIModelItem& item) const {
    return policy_.dragging && policy_.dragging->uid() == item.uid();
}

std::string StackEditing::startDrag(const AIModelItem& item) {
    policy_.dragging = item;
    policy_.onChange();
    policy_.queues.postMainAfter(policy_.longestDrag, whileAlive([this, uid = item.uid()] {
                                     if (policy_.dragging && policy_.dragging->uid() == uid) {
                                         policy_.dragging.reset();
                                         policy_.onOverdue();
                                     }
                                 }));
    return item.uid();
}

void StackEditing::receive(const platform::PayloadProviders& providers,
                           const std::function<void(const std::string& text)>& use) const {
    for (const platform::PayloadProvider& provider : providers) {
        // The text may come on another thread: there only what is captured here is touched.
        provider([&queues = policy_.queues,
                  use = alive_.whileAlive(use)](const std::optional<std::string>& text) {
            if (text) {
                queues.postMain([use, text = *text]() mutable { use(text); });
            }
        });
    }
}

platform::Task StackEditing::whileAlive(platform::Task task) const {
    return alive_.whileAlive(std::move(task));
}

} // namespace varnhold
