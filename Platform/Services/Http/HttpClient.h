#pragma once

#include "Platform/Foundation/Result.h"

#include <chrono>
#include <cstddef>
#include <functional>
#include <string>

namespace anadrome {

inline constexpr const char* NSURLErrorDomain = "NSURLErrorDomain";

/// Codes of NSURLErrorDomain.
enum NSURLErrorCode : long {
    NSURLErrorTimedOut = -1001,
    NSURLErrorUnsupportedURL = -1002,
    NSURLErrorCannotConnectToHost = -1004,
    NSURLErrorNetworkConnectionLost = -1005,
    NSURLErrorHTTPTooManyRedirects = -1007,
    NSURLErrorBadServerResponse = -1011,
    NSURLErrorDataLengthExceedsMaximum = -1103,
    NSURLErrorSecureConnectionFailed = -1200,
};

/// Of the error that lies under NSURLErrorBadServerResponse where an answer came with another status than was
/// asked for. Its code is that status.
inline constexpr const char* HTTPStatusDomain = "HTTPStatus";

struct HttpRequest {
    /// http or https, with its query.
    std::string address;
    /// Sent with POST as JSON; an empty one asks with GET.
    std::string body{};
    /// For the whole exchange, redirects included.
    std::chrono::milliseconds timeout{10'000};
    /// Bytes of the answer. One that is longer is broken off.
    std::size_t maximumLength = 256 * 1024;
};

/// Asks servers, on a thread of its own which is started by the first request. Nothing is stored, no cookie
/// is kept, and nothing is told of the machine or the user but the program's name and version. A
/// question without a body follows a few redirects, never from https to http.
class HttpClient {
public:
    /// The body of an answer with a status of 200 to 299; for any other end an error of NSURLErrorDomain.
    using Completion = std::function<void(Result<std::string> result)>;

    /// Any thread, returns at once. Completes once, on the main queue, never before the call returns. The
    /// request leaves when the main thread gets to it. One that is under way at the application's end is
    /// broken off; while the system still looks up a name, the process ends only after that.
    static void send(HttpRequest request, Completion completion);
};

} // namespace anadrome
