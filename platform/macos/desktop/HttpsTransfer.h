#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#import <Foundation/Foundation.h>

#include "platform/HttpsClient.h"
#include "platform/MainLoopReplies.h"
#include "platform/SerialQueue.h"

namespace corvane {

/// One document on its way here, in a session of its own, so that nothing of one is known to the next. Main
/// loop; ends early when it is destroyed.
class HttpsTransfer {
public:
    /// `mainLoop` outlives the transfer. `done` runs once, later, with the body or with none when there is no
    /// complete answer in time; it may not destroy this.
    HttpsTransfer(SerialQueue& mainLoop, NSURL* url, const HttpsClient::Request& wanted,
                  HttpsClient::Done done);
    HttpsTransfer(const HttpsTransfer&) = delete;
    HttpsTransfer& operator=(const HttpsTransfer&) = delete;
    ~HttpsTransfer();

private:
    void finish(std::optional<std::string> body);

    HttpsClient::Done done_;
    MainLoopReplies<std::optional<std::string>> replies_;
    NSURLSession* session_;
    std::unique_ptr<Timer> timeout_;
};

}  // namespace corvane
