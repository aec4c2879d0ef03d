#include "views/desktop/token_in_use.h"

#include <QByteArray>
#include <QGuiApplication>

#include "base/activation_token.h"

namespace varnhold {

void withToken(const std::string& token, const std::function<void()>& work) {
    // Other threads may be starting children, so the environment isn't touched without need.
    const bool isOfUse =
        !token.empty() && QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
    if (isOfUse) {
        qputenv(activationTokenVariable, QByteArray::fromStdString(token));
    }
    work();
    if (isOfUse) {
        qunsetenv(activationTokenVariable);
    }
}

} // namespace varnhold
