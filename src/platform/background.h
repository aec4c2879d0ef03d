#pragma once

#include <memory>
#include <type_traits>
#include <utility>

#include "platform/platform.h"

// Work that comes back to an object which may be gone by then.
namespace varnhold::platform {

// A member of such an object, by which its tasks know whether it still lives. Main thread.
class Alive final {
public:
    Alive() = default;
    Alive(const Alive&) = delete;
    Alive& operator=(const Alive&) = delete;
    ~Alive() = default;

    // The task, which does nothing once the owner has gone. It may be carried across other threads,
    // but is to be run on the owner's.
    template <class Work>
    [[nodiscard]] auto whileAlive(Work work) const {
        return [owner = std::weak_ptr(owner_), work = std::move(work)](auto&&... given) mutable {
            if (!owner.expired()) {
                work(std::forward<decltype(given)>(given)...);
            }
        };
    }

private:
    std::shared_ptr<const bool> owner_ = std::make_shared<const bool>(true);
};

// Does the work on another thread and gives its result to `then` on the main thread, unless the
// owner has gone by that time. The work is done in any case, so it must hold nothing of the
// owner's; the queues outlive both.
template <class Work, class Then>
void background(Queues& queues, Priority priority, const Alive& owner, Work work, Then then) {
    queues.postBackground(priority, [&queues, work = std::move(work),
                                     then = owner.whileAlive(std::move(then))]() mutable {
        queues.postMain(
            [result = work(), then = std::move(then)]() mutable { then(std::move(result)); });
    });
}

} // namespace varnhold::platform
