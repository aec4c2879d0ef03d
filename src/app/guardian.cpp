#include "app/guardian.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <unistd.h>
#include <vector>

namespace varnhold {

namespace {

constexpr char guarding = 'g'; // comes with the descriptors, the display's first
constexpr char dismissed = 'd';
constexpr std::size_t mostDescriptors = 2;
constexpr const char* name = "varnhold-guard"; // what tools show of a process has 15 letters

// In the room that the system has for our words, so that the two can be told apart in lists.
void nameProcess(int argc, char** argv) {
    ::prctl(PR_SET_NAME, name);
    char* const end = argv[argc - 1] + std::strlen(argv[argc - 1]);
    const auto room = static_cast<std::size_t>(end - argv[0]);
    std::memset(argv[0], 0, room);
    std::memcpy(argv[0], name, std::min(room, std::strlen(name)));
}

// What ends a session's programs ends ours, and this one by it. Not ignored: children would be too.
void outliveSignals() {
    struct sigaction action {};
    action.sa_handler = [](int) {};
    action.sa_flags = SA_RESTART;
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        ::sigaction(signal, &action, nullptr);
    }
}

// The kernel's own form of a message with descriptors.
struct DescriptorMessage {
    char word = 0;
    iovec text{&word, 1};
    alignas(cmsghdr) std::array<char, CMSG_SPACE(mostDescriptors * sizeof(int))> room{};
    msghdr header{};

    DescriptorMessage() {
        header.msg_iov = &text;
        header.msg_iovlen = 1;
        header.msg_control = room.data();
        header.msg_controllen = room.size();
    }
    DescriptorMessage(const DescriptorMessage&) = delete;
    DescriptorMessage& operator=(const DescriptorMessage&) = delete;
};

void send(int link, char word, const std::vector<int>& descriptors) {
    DescriptorMessage message;
    message.word = word;
    const std::size_t bytes = descriptors.size() * sizeof(int);
    message.header.msg_controllen = descriptors.empty() ? 0 : CMSG_SPACE(bytes);
    if (cmsghdr* part = CMSG_FIRSTHDR(&message.header); part != nullptr) {
        part->cmsg_level = SOL_SOCKET;
        part->cmsg_type = SCM_RIGHTS;
        part->cmsg_len = CMSG_LEN(bytes);
        std::memcpy(CMSG_DATA(part), descriptors.data(), bytes);
    }
    // A guardian that somebody has ended is missed by nobody until the display goes.
    static_cast<void>(::sendmsg(link, &message.header, MSG_NOSIGNAL));
}

// Blocks; false once the other side is gone. `display` is set when it is told.
bool receive(int link, char& word, int& display) {
    DescriptorMessage message;
    ssize_t length = -1;
    do {
        length = ::recvmsg(link, &message.header, MSG_CMSG_CLOEXEC);
    } while (length < 0 && errno == EINTR);
    if (length <= 0) {
        return false;
    }
    word = message.word;
    if (const cmsghdr* part = CMSG_FIRSTHDR(&message.header);
        part != nullptr && part->cmsg_type == SCM_RIGHTS) {
        std::memcpy(&display, CMSG_DATA(part), sizeof display);
    }
    return true;
}

bool hasEnded(int connection) {
    pollfd asked{connection, POLLRDHUP, 0};
    return connection >= 0 && ::poll(&asked, 1, 0) == 1 &&
           (asked.revents & (POLLRDHUP | POLLHUP | POLLERR)) != 0;
}

// Whether the program went with its work undone, and the display before it.
bool isNeeded(int link) {
    char word = 0;
    int display = -1;
    while (receive(link, word, display)) {
        if (word == dismissed) {
            return false;
        }
    }
    return word == guarding && hasEnded(display);
}

} // namespace

Guardian::Guardian(int argc, char** argv, const std::function<void()>& work) {
    std::array<int, 2> ends{-1, -1};
    if (::socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends.data()) != 0) {
        return;
    }
    const pid_t child = ::fork();
    if (child == 0) {
        ::close(ends[0]);
        nameProcess(argc, argv);
        outliveSignals();
        if (isNeeded(ends[1])) {
            work();
        }
        std::_Exit(EXIT_SUCCESS);
    }
    ::close(ends[1]);
    link_ = ends[0];
}

Guardian::~Guardian() {
    if (link_ >= 0) {
        ::close(link_);
    }
}

void Guardian::guard(int display, int lock) {
    if (link_ < 0 || display < 0) {
        return;
    }
    std::vector<int> descriptors{display};
    if (lock >= 0) {
        descriptors.push_back(lock);
    }
    send(link_, guarding, descriptors);
}

void Guardian::dismiss() {
    if (link_ >= 0) {
        send(link_, dismissed, {});
    }
}

} // namespace varnhold
