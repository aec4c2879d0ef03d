#pragma once

#include <QNetworkAccessManager>
#include <QObject>
#include <QTimer>
#include <QUrl>
#include <chrono>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/http_client.h"

namespace varnhold::platform {

// GETs on the network classes of Qt, any number at once. Follows redirections that don't lead from
// a safe scheme to an unsafe one.
//
// The host's name is looked up once for all requests that wait for it, and they fail together where
// it can't be had: without a network, a resolver may take a quarter of a minute to say so. Requests
// still under way when the client goes are dropped without an answer.
class QtHttpClient final : public HttpClient {
public:
    struct Limits {
        std::chrono::milliseconds silence = std::chrono::minutes(1); // without a byte
        std::chrono::milliseconds lookup = std::chrono::seconds(3);
    };

    QtHttpClient() : QtHttpClient(Limits{std::chrono::minutes(1), std::chrono::seconds(3)}) {}
    explicit QtHttpClient(Limits limits) : limits_(limits) {}

    void get(const std::string& url, Completion completion) override;

private:
    struct Request {
        QUrl address;
        Completion completion;
    };
    // What waits for the lookup of one host, and for how long.
    struct Lookup {
        std::vector<Request> requests;
        QTimer* limit = nullptr;
    };
    // One share of the toolkit's network, which has so many connections to one server.
    struct Share {
        QNetworkAccessManager manager;
        int underWay = 0;
    };

    void lookUp(const QString& host);
    void takeLookup(const QString& host, bool found);
    void send(const Request& request);
    [[nodiscard]] Share& shareWithRoom();
    void leave(Share& share);
    void drop(const Share* share);

    Limits limits_;
    std::map<QString, Lookup> lookups_; // by host
    // Made at need: each costs a thread, and most runs of the program ask for nothing.
    std::vector<std::unique_ptr<Share>> shares_;
    QObject context_; // goes first, and with it whatever would come back
};

} // namespace varnhold::platform
