#include "platform/qt/qt_http_client.h"

#include <QNetworkReply>
#include <QNetworkRequest>
#include <QUrl>

namespace varnhold::platform {

namespace {

// An error status is a reply like any other. A connection that failed or broke is none, even where
// a piece of a body had come before.
bool isWhole(QNetworkReply::NetworkError error) {
    return error == QNetworkReply::NoError ||
           (error > QNetworkReply::UnknownNetworkError && error != QNetworkReply::ProtocolFailure);
}

} // namespace

QtHttpClient::QtHttpClient(std::chrono::milliseconds silence) : silence_(silence) {}

void QtHttpClient::get(const std::string& url, Completion completion) {
    if (!manager_) {
        manager_ = std::make_unique<QNetworkAccessManager>();
    }
    QNetworkRequest request{QUrl(QString::fromStdString(url))};
    request.setTransferTimeout(static_cast<int>(silence_.count()));
    QNetworkReply* const reply = manager_->get(request);
    QObject::connect(
        reply, &QNetworkReply::finished, reply,
        [reply, completion = std::move(completion)] {
            reply->deleteLater();
            completion(isWhole(reply->error()) ? reply->readAll().toStdString() : std::string());
        },
        Qt::QueuedConnection);
}

} // namespace varnhold::platform
