#include "app/knock.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <sys/socket.h>
#include <sys/time.h>
#include <sys/un.h>
#include <unistd.h>

#include "platform/private_folder.h"

namespace varnhold {

namespace {

constexpr timeval longestWait{.tv_sec = 1, .tv_usec = 0}; // for each step

bool connectTo(int socket, const std::string& path) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.size() >= sizeof address.sun_path) {
        return false;
    }
    std::memcpy(static_cast<char*>(address.sun_path), path.c_str(), path.size() + 1);
    ::setsockopt(socket, SOL_SOCKET, SO_SNDTIMEO, &longestWait, sizeof longestWait);
    ::setsockopt(socket, SOL_SOCKET, SO_RCVTIMEO, &longestWait, sizeof longestWait);
    return ::connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
}

// It closes when it has heard the end. One that goes without having looked breaks the connection.
bool say(int socket, const std::string& text) {
    if (::write(socket, text.data(), text.size()) != static_cast<ssize_t>(text.size()) ||
        ::shutdown(socket, SHUT_WR) != 0) {
        return false;
    }
    char answer = 0;
    return ::recv(socket, &answer, 1, 0) >= 0 || errno == EAGAIN || errno == EWOULDBLOCK;
}

} // namespace

std::string knockingPath(const std::string& runtimeFolder) {
    return runtimeFolder + "/supervisor.socket";
}

bool knock(const std::string& runtimeFolder, const std::string& text) {
    const auto folder = platform::PrivateFolder::find(runtimeFolder);
    if (!folder || !*folder) {
        return false;
    }
    // One that goes just now is no reason to end by a signal.
    const auto before = std::signal(SIGPIPE, SIG_IGN);
    const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
    const bool heard =
        socket >= 0 && connectTo(socket, knockingPath(runtimeFolder)) && say(socket, text);
    if (socket >= 0) {
        ::close(socket);
    }
    std::signal(SIGPIPE, before);
    return heard;
}

} // namespace varnhold
