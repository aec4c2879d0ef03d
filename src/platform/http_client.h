#pragma once

#include <functional>
#include <string>

namespace varnhold::platform {

// The program's one way into the network. Main thread only.
class HttpClient {
public:
    using Completion = std::function<void(std::string body)>;

    virtual ~HttpClient() = default;

    // Asks for the address and hands over the body of the reply, whatever status it came with, on
    // the main thread, once, and never inside this call. Empty where no whole reply came: nobody
    // answered, the connection broke, the address is none, or nothing arrived for a minute. Any
    // number of requests may be under way.
    virtual void get(const std::string& url, Completion completion) = 0;
};

} // namespace varnhold::platform
