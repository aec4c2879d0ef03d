#include "shell_world.h"

#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <stdexcept>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>

#include "base/text.h"

namespace varnhold::testing {

namespace {

using namespace std::chrono_literals;

constexpr auto patience = 120s;
constexpr auto lookAgain = 5ms;

// A pull opens the gate for reading, which waits until someone opens it for writing.
constexpr const char* standIn = R"(#!/bin/sh
line=$1
command=$1
shift
for word in "$@"; do line="$line [$word]"; done
printf '%s\n' "$line" >>"$HOME/calls"
case $command in
list) cat "$HOME/listing" ;;
pull) if [ -p "$HOME/gate" ]; then : <"$HOME/gate"; fi ;;
esac
)";

} // namespace

Environment::~Environment() {
    // NOLINTNEXTLINE(modernize-loop-convert): this clang can't read the library's reversed ranges
    for (auto each = before_.crbegin(); each != before_.crend(); ++each) {
        const auto& [name, value] = *each;
        if (value) {
            ::setenv(name.c_str(), value->c_str(), 1);
        } else {
            ::unsetenv(name.c_str());
        }
    }
}

void Environment::set(const std::string& name, const std::string& value) {
    const char* old = std::getenv(name.c_str());
    before_.emplace_back(name, old == nullptr ? std::nullopt : std::optional<std::string>(old));
    ::setenv(name.c_str(), value.c_str(), 1);
}

ShellWorld::ShellWorld(Tool tool) : constants_(home_.path()) {
    environment_.set("HOME", home_.path());
    environment_.set("PATH", home_.at("bin") + ":/usr/bin:/bin");
    home_.write(home_.at("calls"), "");
    home_.write(home_.at("listing"), "");
    home_.makeFolder(home_.at("bin"));
    home_.makeFolder(constants_.appSupportDir);
    if (tool == Tool::installed) {
        home_.write(home_.at("bin/ollama"), standIn);
        std::filesystem::permissions(home_.at("bin/ollama"), std::filesystem::perms::owner_all);
    }
    static int argumentCount = 1;
    static char name[] = "test";
    static char* arguments[] = {name, nullptr};
    application_ = std::make_unique<QCoreApplication>(argumentCount, arguments);
    platform_.emplace();
    view.emplace(platform(), constants_);
}

ShellWorld::~ShellWorld() {
    letPullsEnd();
    view.reset();
    platform_.reset(); // waits for what still runs in the background
    if (openGate_ >= 0) {
        ::close(openGate_);
    }
}

void ShellWorld::list(const std::string& listing) const {
    home_.write(home_.at("listing"), listing);
}

void ShellWorld::holdPulls() const {
    if (::mkfifo(gate().c_str(), S_IRUSR | S_IWUSR) != 0) {
        throw std::runtime_error("no gate can be made");
    }
}

void ShellWorld::letPullsEnd() {
    if (openGate_ < 0 && std::filesystem::exists(gate())) {
        openGate_ = ::open(gate().c_str(), O_RDWR | O_CLOEXEC);
    }
}

std::vector<std::string> ShellWorld::calls() const {
    const std::string noted = home_.read(home_.at("calls"));
    std::vector<std::string> lines;
    for (const std::string_view line : text::split(noted, '\n')) {
        if (!line.empty()) {
            lines.emplace_back(line);
        }
    }
    return lines;
}

bool ShellWorld::runUntil(const std::function<bool()>& reached) const {
    const QDeadlineTimer deadline(patience);
    QEventLoop loop;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &loop, [&] {
        if (reached() || deadline.hasExpired()) {
            loop.quit();
        }
    });
    timer.start(lookAgain);
    loop.exec();
    return reached();
}

} // namespace varnhold::testing
