#include "platform/qt/qt_http_client.h"

#include <QHostInfo>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <algorithm>
#include <string>
#include <utility>

namespace varnhold::platform {

namespace {

constexpr int connectionsToOneServer = 6; // of one manager; fixed by the toolkit

// An error status is a reply like any other. A connection that failed or broke is none, even where
// a piece of a body had come before.
bool isWhole(QNetworkReply::NetworkError error) {
    return error == QNetworkReply::NoError ||
           (error > QNetworkReply::UnknownNetworkError && error != QNetworkReply::ProtocolFailure);
}

} // namespace

void QtHttpClient::get(const std::string& url, Completion completion) {
    Request request{QUrl(QString::fromStdString(url)), std::move(completion)};
    const QString host = request.address.host();
    if (host.isEmpty()) {
        send(request); // the toolkit knows what is wrong with it
        return;
    }
    const bool isFirst = !lookups_.contains(host);
    lookups_[host].requests.push_back(std::move(request));
    if (isFirst) {
        lookUp(host);
    }
}

void QtHttpClient::lookUp(const QString& host) {
    const int lookup = QHostInfo::lookupHost(host, &context_, [this, host](const QHostInfo& info) {
        takeLookup(host, info.error() == QHostInfo::NoError);
    });
    auto* const limit = new QTimer(&context_);
    limit->setSingleShot(true);
    QObject::connect(limit, &QTimer::timeout, &context_, [this, host, lookup] {
        QHostInfo::abortHostLookup(lookup);
        takeLookup(host, false);
    });
    limit->start(limits_.lookup);
    lookups_[host].limit = limit;
}

void QtHttpClient::takeLookup(const QString& host, bool found) {
    const auto lookup = lookups_.extract(host);
    lookup.mapped().limit->stop();
    lookup.mapped().limit->deleteLater();
    for (const Request& request : lookup.mapped().requests) {
        if (found) {
            send(request);
        } else {
            request.completion({});
        }
    }
}

void QtHttpClient::send(const Request& request) {
    Share& share = shareWithRoom();
    QNetworkRequest sent(request.address);
    sent.setTransferTimeout(static_cast<int>(limits_.silence.count()));
    QNetworkReply* const reply = share.manager.get(sent);
    QObject::connect(
        reply, &QNetworkReply::finished, &context_,
        [this, &share, reply, completion = request.completion] {
            reply->deleteLater();
            const bool whole = isWhole(reply->error());
            std::string body = whole ? reply->readAll().toStdString() : std::string();
            leave(share);
            completion(std::move(body));
        },
        Qt::QueuedConnection);
}

QtHttpClient::Share& QtHttpClient::shareWithRoom() {
    auto found = std::find_if(shares_.begin(), shares_.end(), [](const auto& share) {
        return share->underWay < connectionsToOneServer;
    });
    if (found == shares_.end()) {
        found = shares_.insert(found, std::make_unique<Share>());
    }
    ++(*found)->underWay;
    return **found;
}

// One is kept, with what it knows of connections; the others give their threads back.
void QtHttpClient::leave(Share& share) {
    if (--share.underWay > 0 || shares_.size() == 1) {
        return;
    }
    QTimer::singleShot(0, &context_, [this, gone = &share] { drop(gone); });
}

void QtHttpClient::drop(const Share* share) {
    std::erase_if(shares_, [&](const auto& each) {
        return each.get() == share && each->underWay == 0 && shares_.size() > 1;
    });
}

} // namespace varnhold::platform
