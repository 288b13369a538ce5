#include "platform/macos/desktop/MacHttpsClient.h"

#include <utility>

#import "platform/macos/desktop/HttpsTransfer.h"
#include "platform/macos/desktop/MacHttpsUrl.h"

namespace corvane {

MacHttpsClient::MacHttpsClient(SerialQueue& mainLoop) : mainLoop_(mainLoop) {}

MacHttpsClient::~MacHttpsClient() = default;

void MacHttpsClient::get(const Request& request, Done done) {
    NSURL* url = httpsUrl(request.url);
    if (url == nil) {
        mainLoop_.async(lifetime_.bound([done = std::move(done)] { done(std::nullopt); }));
        return;
    }
    const std::uint64_t number = ++lastNumber_;
    transfers_[number] = std::make_unique<HttpsTransfer>(
        mainLoop_, url, request, [this, number, done = std::move(done)](std::optional<std::string> body) {
            // As work of its own: a transfer must not be destroyed in its own.
            mainLoop_.async(lifetime_.bound([this, number, done, body = std::move(body)] {
                transfers_.erase(number);
                done(body);
            }));
        });
}

}  // namespace corvane
