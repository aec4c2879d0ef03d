#pragma once

#include <string>
#include <vector>

#include "platform/http_client.h"

namespace varnhold::testing {

// A network in which every request waits until the test answers it.
class FakeHttpClient final : public platform::HttpClient {
public:
    // Of all requests ever made, in order, also those that were answered.
    std::vector<std::string> urls;

    // Answers the request with this number; a second answer to one is a mistake of the test.
    void answer(std::size_t number, const std::string& body);
    void answerAll(const std::string& body);

    void get(const std::string& url, Completion completion) override;

private:
    std::vector<Completion> waiting_; // by number; empty once answered
};

} // namespace varnhold::testing
