#include "platform/linux/desktop/QtHttpsClient.h"

#include <utility>

#include "platform/linux/desktop/HttpsDownload.h"
#include "platform/linux/desktop/HttpsUrl.h"

namespace corvane {

QtHttpsClient::QtHttpsClient(SerialQueue& mainLoop, std::optional<QSslConfiguration> tls)
    : mainLoop_(mainLoop), tls_(std::move(tls)) {}

QtHttpsClient::~QtHttpsClient() = default;

void QtHttpsClient::get(const Request& request, Done done) {
    const auto url = httpsUrl(request.url);
    if (!url) {
        mainLoop_.async(lifetime_.bound([done = std::move(done)] { done(std::nullopt); }));
        return;
    }
    const std::uint64_t number = ++lastNumber_;
    downloads_[number] = std::make_unique<HttpsDownload>(
        mainLoop_,
        HttpsDownload::Request{
            .url = *url, .timeout = request.timeout, .largestBody = request.largestBody, .tls = tls_},
        [this, number, done = std::move(done)](std::optional<std::string> body) {
            // As work of its own: a download must not be destroyed in its own.
            mainLoop_.async(lifetime_.bound([this, number, done, body = std::move(body)] {
                downloads_.erase(number);
                done(body);
            }));
        });
}

}  // namespace corvane
