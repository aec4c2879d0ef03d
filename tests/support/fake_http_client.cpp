#include "support/fake_http_client.h"

#include <utility>

namespace varnhold::testing {

void FakeHttpClient::get(const std::string& url, Completion completion) {
    urls.push_back(url);
    waiting_.push_back(std::move(completion));
}

void FakeHttpClient::answer(std::size_t number, const std::string& body) {
    const Completion completion = std::exchange(waiting_.at(number), nullptr);
    completion(body);
}

void FakeHttpClient::answerAll(const std::string& body) {
    for (std::size_t number = 0; number < waiting_.size(); ++number) {
        if (waiting_[number]) {
            answer(number, body);
        }
    }
}

} // namespace varnhold::testing
