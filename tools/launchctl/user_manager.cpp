#include "launchctl/user_manager.h"

#include <cerrno>
#include <chrono>
#include <cstring>
#include <map>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

#include "launchctl/unit_message.h"

namespace varnhold::services {

namespace {

using namespace std::chrono_literals;

constexpr const char* service = "org.freedesktop.systemd1";
constexpr const char* object = "/org/freedesktop/systemd1";
constexpr const char* manager = "org.freedesktop.systemd1.Manager";
constexpr std::chrono::microseconds jobLimit = 30s; // the exit timeout and a loaded machine

struct BusDeleter {
    void operator()(sd_bus* bus) const { sdBus().close_unref(bus); }
};
using Bus = std::unique_ptr<sd_bus, BusDeleter>;

std::string reasonOf(int code) {
    return std::string("the user manager doesn't answer: ") + std::strerror(-code); // NOLINT
}

bool isOwnSocket(const std::string& path) {
    struct stat found {};
    return ::stat(path.c_str(), &found) == 0 && S_ISSOCK(found.st_mode) &&
           found.st_uid == ::getuid();
}

// An address keeps a few characters as they are and writes the others in hex.
std::string addressOf(const std::string& path) {
    constexpr std::string_view plain =
        "-_/.*0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
    constexpr std::string_view digits = "0123456789abcdef";
    std::string out = "unix:path=";
    for (const char c : path) {
        const auto byte = static_cast<unsigned char>(c);
        if (plain.find(c) != std::string_view::npos) {
            out += c;
        } else {
            out += {'%', digits[byte >> 4U], digits[byte & 15U]};
        }
    }
    return out;
}

Bus open(const std::string& socket, bool isBus, std::chrono::microseconds limit) {
    sd_bus* raw = nullptr;
    if (!isOwnSocket(socket) || !hasSdBus() || sdBus().make(&raw) < 0) {
        return nullptr;
    }
    Bus bus(raw);
    const bool started =
        sdBus().set_address(raw, addressOf(socket).c_str()) >= 0 &&
        sdBus().set_bus_client(raw, isBus ? 1 : 0) >= 0 && sdBus().set_trusted(raw, 1) >= 0 &&
        sdBus().start(raw) >= 0 &&
        sdBus().set_method_call_timeout(raw, static_cast<std::uint64_t>(limit.count())) >= 0;
    return started ? std::move(bus) : nullptr;
}

// Asking for a name's owner starts nobody, unlike a call to the name.
bool hasManager(sd_bus* bus) {
    Message reply;
    return sdBus().call_method(bus, "org.freedesktop.DBus", "/org/freedesktop/DBus",
                               "org.freedesktop.DBus", "GetNameOwner", nullptr, reply.out(), "s",
                               service) >= 0;
}

// A connection to the manager's own socket is made also while nobody is there to read from it.
bool answers(sd_bus* bus) {
    Message reply;
    return sdBus().call_method(bus, service, object, "org.freedesktop.DBus.Peer", "Ping", nullptr,
                               reply.out(), nullptr) >= 0;
}

// A question on its way.
struct Pending {
    Question* question;
    std::size_t* open;
    bool* silent;
};

int onReply(sd_bus_message* reply, void* data, sd_bus_error*) {
    const auto* pending = static_cast<Pending*>(data);
    --*pending->open;
    const sd_bus_error* error = sdBus().message_get_error(reply);
    if (sdBus().error_has_name(error, SD_BUS_ERROR_NO_REPLY) > 0 ||
        sdBus().error_has_name(error, SD_BUS_ERROR_TIMEOUT) > 0) {
        *pending->silent = true;
    }
    readNumber(reply, pending->question->answer);
    return 0;
}

} // namespace

struct UserManager::Connection {
    Bus bus;
    bool listens = false;
    struct End {
        std::string unit;
        bool failed = false;
    };
    std::map<std::string, End> finished; // jobs that the manager has told the end of

    static int onJobRemoved(sd_bus_message* message, void* self, sd_bus_error*) {
        const char* path = nullptr;
        const char* unit = nullptr;
        const char* result = nullptr;
        if (sdBus().message_read(message, "uoss", nullptr, &path, &unit, &result) >= 0) {
            static_cast<Connection*>(self)->finished.insert_or_assign(
                path, End{unit, std::string_view(result) == "failed"});
        }
        return 0;
    }

    // Must be sent before the first call that makes a job; their order on the wire is kept.
    void listen() {
        if (!listens) {
            listens = true;
            // Without a sender, which a connection that goes round the bus doesn't tell.
            sdBus().match_signal_async(bus.get(), nullptr, nullptr, object, manager, "JobRemoved",
                                       onJobRemoved, nullptr, this);
            sdBus().call_method_async(bus.get(), nullptr, service, object, manager, "Subscribe",
                                      nullptr, nullptr, nullptr);
        }
    }

    Result<Message> newCall(const char* member) const {
        Message message;
        const int made = sdBus().message_new_method_call(bus.get(), message.out(), service, object,
                                                         manager, member);
        if (made < 0) {
            return failure(reasonOf(made));
        }
        sdBus().message_set_auto_start(message.get(), 0);
        return message;
    }

    // A reply, or none where there is no such unit or process, or one too many.
    Result<Reply> call(const Message& message, Message& reply) const {
        BusError error;
        const int code = sdBus().call(bus.get(), message.get(), 0, error.get(), reply.out());
        if (code >= 0) {
            return Reply::done;
        }
        if (error.is("org.freedesktop.systemd1.UnitExists")) {
            return Reply::exists;
        }
        if (error.is("org.freedesktop.systemd1.NoSuchUnit") ||
            error.is("org.freedesktop.systemd1.NoSuchProcess") ||
            error.is("org.freedesktop.DBus.Error.UnixProcessIdUnknown")) {
            return Reply::nothing;
        }
        const bool silent = code == -ETIMEDOUT || code == -ECONNRESET || error.message().empty();
        return failure(silent ? reasonOf(code) : error.message());
    }

    // Whether the manager could start no process for the unit.
    bool lacksResources(const std::string& unit) const {
        Message found;
        sdBus().call_method(bus.get(), service, object, manager, "GetUnit", nullptr, found.out(),
                            "s", unit.c_str());
        const char* path = nullptr;
        if (found.get() == nullptr || sdBus().message_read(found.get(), "o", &path) < 0) {
            return false;
        }
        Message answer;
        sdBus().call_method(bus.get(), service, path, "org.freedesktop.DBus.Properties", "Get",
                            nullptr, answer.out(), "ss", "org.freedesktop.systemd1.Service",
                            "Result");
        const char* result = nullptr;
        return answer.get() != nullptr &&
               sdBus().message_read(answer.get(), "v", "s", &result) >= 0 &&
               std::string_view(result) == "resources";
    }

    // For calls that make a job: waits until it has been worked off. However it went, the manager
    // sees to the unit from then on; only what it couldn't begin is a failure.
    Result<Reply> callAndWait(const Message& message, const std::function<void()>& onTaken = {}) {
        Message reply;
        auto replied = call(message, reply);
        const char* path = nullptr;
        if (!replied || *replied != Reply::done ||
            sdBus().message_read(reply.get(), "o", &path) < 0) {
            return replied;
        }
        if (onTaken) {
            onTaken();
        }
        const std::string job = path;
        const auto latest = std::chrono::steady_clock::now() + jobLimit;
        while (!finished.contains(job)) {
            const auto left = std::chrono::duration_cast<std::chrono::microseconds>(
                latest - std::chrono::steady_clock::now());
            const int worked = sdBus().process(bus.get(), nullptr);
            if (worked < 0) {
                return failure(reasonOf(worked));
            }
            if (left.count() <= 0) {
                return failure("the user manager doesn't get done");
            }
            if (worked == 0) {
                sdBus().wait(bus.get(), static_cast<std::uint64_t>(left.count()));
            }
        }
        const End& end = finished[job];
        return end.failed && lacksResources(end.unit)
                   ? failure("no process can be started by the user manager")
                   : Result<Reply>(Reply::done);
    }

    Result<Reply> job(const char* member, const std::string& unit,
                      const std::function<void()>& onTaken = {}) {
        listen();
        const auto message = newCall(member);
        if (!message) {
            return failure(message.error());
        }
        sdBus().message_append(message->get(), "ss", unit.c_str(), "replace");
        return callAndWait(*message, onTaken);
    }
};

UserManager::UserManager(std::unique_ptr<Connection> connection)
    : connection_(std::move(connection)) {}
UserManager::UserManager(UserManager&&) noexcept = default;
UserManager& UserManager::operator=(UserManager&&) noexcept = default;
UserManager::~UserManager() = default;

Result<UserManager> UserManager::connect(const std::string& runtimeFolder,
                                         std::chrono::microseconds limit) {
    auto connection = std::make_unique<Connection>();
    connection->bus = open(runtimeFolder + "/bus", true, limit);
    if (!connection->bus || !hasManager(connection->bus.get())) {
        // A bus that has crashed mustn't make a running fleet look gone.
        connection->bus = open(runtimeFolder + "/systemd/private", false, limit);
        if (connection->bus && !answers(connection->bus.get())) {
            connection->bus = nullptr;
        }
    }
    if (!connection->bus) {
        return failure("no user manager answers");
    }
    return UserManager(std::move(connection));
}

Result<std::vector<Unit>> UserManager::units(const std::vector<std::string>& patterns) {
    const auto message = connection_->newCall("ListUnitsByPatterns");
    if (!message) {
        return failure(message.error());
    }
    appendTexts(*message,
                {"active", "activating", "deactivating", "failed", "reloading", "inactive"});
    appendTexts(*message, patterns);
    Message reply;
    if (const auto replied = connection_->call(*message, reply); !replied) {
        return failure(replied.error());
    }
    return readUnits(reply);
}

Result<void> UserManager::ask(std::vector<Question>& questions) {
    std::size_t open = questions.size();
    bool silent = false;
    std::vector<Pending> pending;
    pending.reserve(questions.size());
    for (Question& question : questions) {
        pending.push_back({&question, &open, &silent});
        const int sent = sdBus().call_method_async(
            connection_->bus.get(), nullptr, service, question.path.c_str(),
            "org.freedesktop.DBus.Properties", "Get", onReply, &pending.back(), "ss",
            "org.freedesktop.systemd1.Service", question.property.c_str());
        if (sent < 0) {
            return failure(reasonOf(sent));
        }
    }
    while (open > 0) {
        const int worked = sdBus().process(connection_->bus.get(), nullptr);
        if (worked < 0) {
            return failure(reasonOf(worked));
        }
        if (worked == 0) {
            sdBus().wait(connection_->bus.get(), UINT64_MAX);
        }
    }
    return silent ? failure(reasonOf(-ETIMEDOUT)) : Result<void>();
}

Result<Reply> UserManager::startTransient(const ServiceUnit& unit) {
    connection_->listen();
    const auto message = connection_->newCall("StartTransientUnit");
    if (!message) {
        return failure(message.error());
    }
    appendTransientUnit(*message, unit);
    return connection_->callAndWait(*message);
}

Result<Reply> UserManager::restart(const std::string& unit) {
    return connection_->job("RestartUnit", unit);
}

Result<Reply> UserManager::stop(const std::string& unit, const std::function<void()>& onTaken) {
    return connection_->job("StopUnit", unit, onTaken);
}

Result<Reply> UserManager::kill(const std::string& unit, int signal) {
    const auto message = connection_->newCall("KillUnit");
    if (!message) {
        return failure(message.error());
    }
    sdBus().message_append(message->get(), "ssi", unit.c_str(), "main", signal);
    Message reply;
    return connection_->call(*message, reply);
}

Result<Reply> UserManager::forgetFailure(const std::string& unit) {
    const auto message = connection_->newCall("ResetFailedUnit");
    if (!message) {
        return failure(message.error());
    }
    sdBus().message_append(message->get(), "s", unit.c_str());
    Message reply;
    return connection_->call(*message, reply);
}

} // namespace varnhold::services
