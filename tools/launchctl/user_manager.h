#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "base/result.h"
#include "launchctl/unit.h"

struct sd_bus;

namespace varnhold::services {

enum class Reply {
    done,
    exists,  // there is a unit of this name
    nothing, // there is no such unit or process
};

// A systemd user manager, asked over its bus (sd-bus). Calls block; a failure is one of the
// connection, with its reason.
class UserManager final {
public:
    // The manager that serves the user whose runtime folder this is. Fails where none answers;
    // never starts one. `limit`: how long any answer may take.
    [[nodiscard]] static Result<UserManager> connect(const std::string& runtimeFolder,
                                                     std::chrono::microseconds limit);

    UserManager(UserManager&&) noexcept;
    UserManager& operator=(UserManager&&) noexcept;
    ~UserManager();

    // Units that are loaded and not simply inactive.
    [[nodiscard]] Result<std::vector<Unit>> units(const std::vector<std::string>& patterns);
    // Sends all questions before it awaits the first answer.
    [[nodiscard]] Result<void> ask(std::vector<Question>& questions);

    // Each of these returns when the manager has finished what it was told.
    [[nodiscard]] Result<Reply> startTransient(const ServiceUnit& unit);
    [[nodiscard]] Result<Reply> restart(const std::string& unit);
    // `onTaken`: called once the manager has taken the wish and sees to it by itself.
    [[nodiscard]] Result<Reply> stop(const std::string& unit,
                                     const std::function<void()>& onTaken = {});

    // A signal to the main process alone.
    [[nodiscard]] Result<Reply> kill(const std::string& unit, int signal);
    [[nodiscard]] Result<Reply> forgetFailure(const std::string& unit);

private:
    struct Connection;
    explicit UserManager(std::unique_ptr<Connection> connection);

    std::unique_ptr<Connection> connection_;
};

} // namespace varnhold::services
