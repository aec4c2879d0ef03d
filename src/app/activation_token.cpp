#include "app/activation_token.h"

#include <QGuiApplication>

namespace varnhold {

namespace {

constexpr const char* variable = "XDG_ACTIVATION_TOKEN";

} // namespace

QByteArray takeActivationToken() {
    QByteArray token = qgetenv(variable);
    qunsetenv(variable);
    return token;
}

void withActivationToken(const QByteArray& token, const std::function<void()>& work) {
    // Other threads may be starting children, so the environment isn't touched without need.
    const bool isOfUse =
        !token.isEmpty() && QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
    if (isOfUse) {
        qputenv(variable, token);
    }
    work();
    if (isOfUse) {
        qunsetenv(variable);
    }
}

} // namespace varnhold
