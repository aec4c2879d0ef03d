#include "support/fake_platform.h"

#include <algorithm>
#include <chrono>
#include <limits>
#include <memory>

namespace varnhold::testing {

using namespace std::chrono;

class FakePlatform::FakeTimer final : public platform::Timer {
public:
    FakeTimer(std::list<Repeating>& owner, std::list<Repeating>::iterator self)
        : owner_(owner), self_(self) {}
    ~FakeTimer() override { owner_.erase(self_); }
    void pause() override { self_->paused = true; }
    void resume() override { self_->paused = false; }
    FakeTimer(const FakeTimer&) = delete;
    FakeTimer& operator=(const FakeTimer&) = delete;

private:
    std::list<Repeating>& owner_;
    std::list<Repeating>::iterator self_;
};

FakePlatform::FakePlatform()
    : interfaces{*this, *this, *this, *this, *this, defaults, http}, answer([](const auto&) {
          platform::ProcessResult result;
          result.started = true;
          return result;
      }) {}

std::string commandLine(const platform::ProcessRequest& request) {
    std::string line = request.program.substr(request.program.rfind('/') + 1);
    for (const std::string& argument : request.arguments) {
        line += " " + argument;
    }
    return line;
}

platform::ProcessResult FakePlatform::note(const platform::ProcessRequest& request, bool waited) {
    children.push_back({request, waited, now_});
    record.push_back((waited ? "run " : "start ") + commandLine(request));
    return answer(request);
}

platform::ProcessResult FakePlatform::run(const platform::ProcessRequest& request) {
    return note(request, true);
}

void FakePlatform::start(const platform::ProcessRequest& request) {
    note(request, false);
}

void FakePlatform::postMain(platform::Task task) {
    record.emplace_back("post main");
    main_.push_back({now_, std::move(task)});
}

void FakePlatform::postMainAfter(milliseconds delay, platform::Task task) {
    record.push_back("post main after " + std::to_string(delay.count()));
    main_.push_back({now_ + delay, std::move(task)});
}

void FakePlatform::postBackground(platform::Priority priority, platform::Task task) {
    record.emplace_back("post background");
    priorities.push_back(priority);
    background_.push_back(std::move(task));
}

std::unique_ptr<platform::Timer> FakePlatform::repeat(milliseconds interval, platform::Task task) {
    record.push_back("timer " + std::to_string(interval.count()));
    const auto self = timers_.insert(timers_.end(), {interval, now_ + interval, std::move(task)});
    return std::make_unique<FakeTimer>(timers_, self);
}

system_clock::time_point FakePlatform::now() {
    return system_clock::time_point(now_);
}

void FakePlatform::sleep(microseconds duration) {
    record.push_back("sleep " + std::to_string(duration.count()));
    advance(duration);
}

void FakePlatform::advance(microseconds duration) {
    fireUntil(now_ + duration);
}

void FakePlatform::runMain() {
    fireUntil(now_);
}

void FakePlatform::runBackground() {
    while (!background_.empty()) {
        const platform::Task task = std::move(background_.front());
        background_.pop_front();
        task();
    }
}

std::size_t FakePlatform::pausedTimers() const {
    return static_cast<std::size_t>(std::count_if(
        timers_.begin(), timers_.end(), [](const Repeating& timer) { return timer.paused; }));
}

void FakePlatform::settle() {
    do {
        runMain();
        runBackground();
        runMain();
    } while (!background_.empty());
}

// Fires what is due up to `end`, earliest first; tasks posted on the way take part.
void FakePlatform::fireUntil(microseconds end) {
    while (true) {
        const auto task = std::min_element(main_.begin(), main_.end(),
                                           [](const Due& a, const Due& b) { return a.at < b.at; });
        const auto timer = std::min_element(
            timers_.begin(), timers_.end(),
            [](const Repeating& a, const Repeating& b) { return a.next < b.next; });
        const auto never = microseconds::max();
        const auto taskAt = task == main_.end() ? never : task->at;
        const auto timerAt = timer == timers_.end() ? never : timer->next;
        if (std::min(taskAt, timerAt) > end) {
            now_ = std::max(now_, end);
            return;
        }
        now_ = std::max(now_, std::min(taskAt, timerAt));
        if (taskAt <= timerAt) {
            const platform::Task work = std::move(task->task);
            main_.erase(task);
            work();
        } else {
            timer->next += timer->interval;
            if (timer->paused) {
                continue;
            }
            const platform::Task work = timer->task; // the timer may end itself
            work();
        }
    }
}

std::vector<std::string> FakePlatform::commandLines() const {
    std::vector<std::string> lines;
    for (const Child& child : children) {
        lines.push_back(commandLine(child.request));
    }
    return lines;
}

} // namespace varnhold::testing
