#pragma once

#include <QNetworkAccessManager>
#include <chrono>
#include <memory>

#include "platform/http_client.h"

namespace varnhold::platform {

// One GET at a time or many, on the network classes of Qt, which share connections between them.
// Follows redirections that don't lead from a safe scheme to an unsafe one. Requests still under
// way when the client goes are dropped without an answer.
class QtHttpClient final : public HttpClient {
public:
    // `silence`: how long a request may go without a byte before it counts as failed.
    explicit QtHttpClient(std::chrono::milliseconds silence = std::chrono::minutes(1));

    void get(const std::string& url, Completion completion) override;

private:
    std::chrono::milliseconds silence_;
    // Made at the first request: it costs a thread, and most runs of the program ask for nothing.
    std::unique_ptr<QNetworkAccessManager> manager_;
};

} // namespace varnhold::platform
