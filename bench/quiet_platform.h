#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <thread>

#include "platform/platform.h"
#include "platform/posix_processes.h"
#include "platform/posix_system.h"

// Surroundings for benchmarks: real processes, files and time, and nothing that happens by itself.
namespace varnhold::bench {

struct NoTimer final : platform::Timer {
    void pause() override {}
    void resume() override {}
};

// Drops what is for later. Where work is measured, what it has put off isn't.
struct NoQueues final : platform::Queues {
    void postMain(platform::Task) override {}
    void postMainAfter(std::chrono::milliseconds, platform::Task) override {}
    void postBackground(platform::Priority, platform::Task) override {}
};

struct NoTimers final : platform::Timers {
    std::unique_ptr<platform::Timer> repeat(std::chrono::milliseconds,
                                            std::function<void()>) override {
        return std::make_unique<NoTimer>();
    }
};

// Time passes, but nobody waits for it: pauses are required, and are the same on any machine.
struct ImpatientClock final : platform::Clock {
    [[nodiscard]] std::chrono::system_clock::time_point now() override {
        return std::chrono::system_clock::now();
    }
    void sleep(std::chrono::microseconds) override {}
};

struct NoHttp final : platform::HttpClient {
    void get(const std::string&, Completion) override {}
};

struct MemoryDefaults final : platform::UserDefaults {
    std::map<std::string, std::string> texts;
    std::map<std::string, bool> truths;
    [[nodiscard]] std::string string(const std::string& key) const override {
        const auto found = texts.find(key);
        return found == texts.end() ? std::string() : found->second;
    }
    void setString(const std::string& key, const std::string& value) override {
        texts[key] = value;
    }
    [[nodiscard]] bool boolean(const std::string& key) const override {
        const auto found = truths.find(key);
        return found != truths.end() && found->second;
    }
    void setBoolean(const std::string& key, bool value) override { truths[key] = value; }
};

struct QuietPlatform {
    platform::PosixProcesses processes;
    NoQueues queues;
    NoTimers timers;
    ImpatientClock clock;
    std::unique_ptr<platform::System> system = platform::makeSystem();
    MemoryDefaults defaults;
    NoHttp http;
    platform::Platform interfaces{processes, queues, timers, clock, *system, defaults, http};
};

} // namespace varnhold::bench
