// Fetches bots' names from a server of the test's over the real network classes, and prints the
// titles that come of it and then how often the fetch completed, one a line:
//
//     fetch_names ADDRESS MILLISECONDS_OF_SILENCE TOKEN...
#include <QCoreApplication>
#include <chrono>
#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

#include "platform/qt/qt_http_client.h"
#include "platform/qt/qt_queues.h"
#include "settings/telegram_names.h"
#include "support/fake_platform.h"

namespace {

using namespace varnhold;

// The real client, with the server of the test in the place of the one in the address.
class Rerouted final : public platform::HttpClient {
public:
    Rerouted(std::string address, std::chrono::milliseconds silence)
        : address_(std::move(address)), client_({.silence = silence}) {}

    void get(const std::string& url, Completion completion) override {
        const auto path = url.find('/', url.find("//") + 2);
        client_.get(address_ + url.substr(path), std::move(completion));
    }

private:
    std::string address_;
    platform::QtHttpClient client_;
};

std::vector<BotConfig> botsWith(const QStringList& tokens) {
    std::vector<BotConfig> bots;
    for (const QString& token : tokens) {
        bots.push_back({.title = "Old", .token = token.toStdString()});
    }
    return bots;
}

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() < 3) {
        std::cerr << "usage: fetch_names ADDRESS MILLISECONDS_OF_SILENCE TOKEN...\n";
        return 2;
    }
    platform::QtQueues queues;
    Rerouted http(arguments[1].toStdString(), std::chrono::milliseconds(arguments[2].toInt()));
    testing::FakePlatform rest;
    platform::Platform platform{rest.interfaces.processes,
                                queues,
                                rest.interfaces.timers,
                                rest.interfaces.clock,
                                rest.interfaces.system,
                                rest.interfaces.defaults,
                                http};
    int completions = 0;
    fetchTelegramNames(platform, botsWith(arguments.mid(3)), [&](const auto& bots) {
        ++completions;
        for (const BotConfig& bot : bots) {
            std::cout << bot.title << '\n';
        }
        queues.postMain([] { QCoreApplication::quit(); }); // a second completion would come first
    });
    const bool early = completions > 0;
    QCoreApplication::exec();
    std::cout << "completions " << completions << (early ? " inside the call" : "") << std::endl;
    std::_Exit(0); // as the program does: a lookup that hangs isn't waited for
}
