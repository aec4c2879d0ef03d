#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "base/result.h"
#include "launchctl/sd_bus.h"
#include "launchctl/unit.h"

// Messages to a systemd user manager and from it, as bytes.
namespace varnhold::services {

class Message final {
public:
    [[nodiscard]] sd_bus_message* get() const { return message_.get(); }

    // For a function that gives a message back through a pointer; takes it over.
    class Out final {
    public:
        explicit Out(Message& target) : target_(target) {}
        Out(const Out&) = delete;
        Out& operator=(const Out&) = delete;
        ~Out() { target_.message_.reset(raw_); }
        operator sd_bus_message**() { return &raw_; } // NOLINT(google-explicit-constructor)

    private:
        Message& target_;
        sd_bus_message* raw_ = nullptr;
    };
    [[nodiscard]] Out out() { return Out(*this); }

private:
    struct Deleter {
        void operator()(sd_bus_message* message) const { sdBus().message_unref(message); }
    };
    std::unique_ptr<sd_bus_message, Deleter> message_;
};

class BusError final {
public:
    BusError() = default;
    BusError(const BusError&) = delete;
    BusError& operator=(const BusError&) = delete;
    ~BusError() { sdBus().error_free(&error_); }
    [[nodiscard]] sd_bus_error* get() { return &error_; }
    [[nodiscard]] bool is(const char* name) const {
        return sdBus().error_has_name(&error_, name) > 0;
    }
    [[nodiscard]] std::string message() const {
        return error_.message == nullptr ? std::string() : error_.message;
    }

private:
    sd_bus_error error_{}; // what the library says in a way that only C has
};

void appendTexts(const Message& message, const std::vector<std::string>& texts);

// All arguments of StartTransientUnit.
void appendTransientUnit(const Message& message, const ServiceUnit& unit);

// The reply to one of the calls that list units.
[[nodiscard]] Result<std::vector<Unit>> readUnits(const Message& reply);

// The number in the reply to a question for a property; leaves `number` alone if there is none.
void readNumber(sd_bus_message* reply, std::int64_t& number);

} // namespace varnhold::services
