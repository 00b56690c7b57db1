#include "Platform/Services/Http/HttpClient.h"
#include "Tests/Support/Certificate.h"
#include "Tests/Support/ChildProcess.h"
#include "Tests/Support/EventLoop.h"
#include "Tests/Support/RawServer.h"
#include "Tests/Support/ReferenceServer.h"

#include <QCoreApplication>
#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <gtest/gtest.h>
#include <optional>

using namespace anadrome;
using namespace anadrome::testing_support;

namespace {

constexpr std::size_t maximumLength = 100'000;

/// The code of the error, or 0, once the answer is there.
struct Outcome {
    long code = 0;
    std::string body;
};

Outcome outcomeOf(HttpRequest request) {
    std::optional<Outcome> outcome;
    request.maximumLength = maximumLength;
    HttpClient::send(std::move(request), [&](Result<std::string> result) {
        EXPECT_FALSE(outcome.has_value());
        outcome = result ? Outcome{0, *result} : Outcome{result.error().code(), ""};
    });
    EXPECT_FALSE(outcome.has_value());
    EXPECT_TRUE(runEventLoopUntil([&] { return outcome.has_value(); }));
    return outcome.value_or(Outcome{});
}

/// A request's header fields may be named in any case; Qt's versions differ.
std::string withLowerFieldNames(std::string messages) {
    std::size_t next = 0;
    for (std::size_t line = 0; line < messages.size(); line = next + 1) {
        next = std::min(messages.find('\n', line), messages.size());
        const std::size_t nameEnd = messages.find_first_of(": ", line);
        if (nameEnd < next && messages[nameEnd] == ':')
            for (std::size_t at = line; at < nameEnd; ++at)
                messages[at] = static_cast<char>(std::tolower(static_cast<unsigned char>(messages[at])));
    }
    return messages;
}

/// For a server that doesn't come to an end, and for one that does.
constexpr std::chrono::milliseconds shortTime{300}, longTime{60'000};

struct Case {
    const char* name;
    RawAnswer answer;
    long code;
    std::chrono::milliseconds timeout = longTime;
    std::string body = "";
};

const Case cases[] = {
    {"an answer", {httpAnswer("200 OK", "Content-Length: 2\r\n", "{}")}, 0, longTime, "{}"},
    {"one without a length", {httpAnswer("200 OK", "", "{}")}, 0, longTime, "{}"},
    {"one of just the length allowed",
     {httpAnswer("200 OK", "", std::string(maximumLength, 'x'))},
     0,
     longTime,
     std::string(maximumLength, 'x')},
    {"nothing to say", {httpAnswer("204 No Content")}, 0},
    {"an unknown page", {httpAnswer("404 Not Found", "", "{}")}, NSURLErrorBadServerResponse},
    {"a broken server", {httpAnswer("500 Internal Server Error")}, NSURLErrorBadServerResponse},
    {"a redirect to nowhere", {httpAnswer("302 Found")}, NSURLErrorBadServerResponse},
    {"another protocol", {"220 mail.example.com ESMTP\r\n\r\n"}, NSURLErrorNetworkConnectionLost},
    {"no answer", {"", "", false, false}, NSURLErrorTimedOut, shortTime},
    {"half a head", {"HTTP/1.1 200 OK\r\nContent-", "", false, false}, NSURLErrorTimedOut, shortTime},
    {"a trickle", {httpAnswer("200 OK"), "x", true}, NSURLErrorTimedOut, shortTime},
    {"a body that breaks off",
     {httpAnswer("200 OK", "Content-Length: 9\r\n", "{")},
     NSURLErrorNetworkConnectionLost},
    {"a chunk that breaks off",
     {httpAnswer("200 OK", "Transfer-Encoding: chunked\r\n", "9\r\n{")},
     NSURLErrorNetworkConnectionLost},
    {"a hang-up", {""}, NSURLErrorNetworkConnectionLost},
    {"an announced gigabyte",
     {httpAnswer("200 OK", "Content-Length: 1000000000\r\n"), "", false, false},
     NSURLErrorDataLengthExceedsMaximum},
    {"an endless body",
     {httpAnswer("200 OK"), std::string(1 << 20, 'x')},
     NSURLErrorDataLengthExceedsMaximum},
    {"one byte too many",
     {httpAnswer("200 OK", "", std::string(maximumLength + 1, 'x'))},
     NSURLErrorDataLengthExceedsMaximum},
    {"an endless head",
     {"HTTP/1.1 200 OK\r\n", "Name: " + std::string(5000, 'x') + "\r\n"},
     NSURLErrorTimedOut,
     shortTime},
    {"a ring of redirects", {httpAnswer("302 Found", "Location: /\r\n")}, NSURLErrorHTTPTooManyRedirects},
    {"a redirect to a file",
     {httpAnswer("302 Found", "Location: file:///etc/passwd\r\n")},
     NSURLErrorBadServerResponse},
};

/// Ends like a program whose user closes it, or whose display goes, while a server hasn't answered yet.
void endWhileAsking(bool leavesTheLoop) {
    int argc = 0;
    QCoreApplication application(argc, nullptr);
    HttpClient::send({.address = std::getenv("ADDRESS"), .timeout = longTime},
                     [](const auto&) { std::_Exit(2); });
    const auto asked = std::chrono::steady_clock::now();
    runEventLoopUntil([&] { return std::chrono::steady_clock::now() - asked > shortTime; });
    if (!leavesTheLoop)
        std::exit(0);
}

[[gnu::constructor]] void playRole() {
    const std::string_view role = ChildProcess::ownRole();
    if (role != "leave the loop" && role != "exit in the loop")
        return;
    endWhileAsking(role == "leave the loop");
    std::exit(0);
}

} // namespace

TEST(HttpClient, TellsEveryEndOfAnExchange) {
    for (const Case& row : cases) {
        SCOPED_TRACE(row.name);
        const RawServer server(row.answer);
        const Outcome outcome = outcomeOf({.address = server.address(), .timeout = row.timeout});
        EXPECT_EQ(outcome.code, row.code);
        EXPECT_EQ(outcome.body, row.body);
        EXPECT_LT(server.sentByteCount(), 20u << 20);
    }
}

TEST(HttpClient, TellsNothingOfUserAndMachine) {
    const RawServer server({httpAnswer("200 OK", "Set-Cookie: a=b\r\n")});
    outcomeOf({.address = server.address() + "a?b=c"});
    outcomeOf({.address = server.address() + "d", .body = "{}"});

    std::string received = server.received();
    for (std::size_t at = 0; (at = received.find(server.address().substr(7, 15))) != received.npos;)
        received.replace(at, server.address().size() - 8, "SERVER");
    const std::string common =
        "user-agent: Anadrome/0.1.0\r\naccept: application/json\r\naccept-language: *\r\n"
        "accept-encoding: identity\r\n";
    EXPECT_EQ(withLowerFieldNames(received),
              "GET /a?b=c HTTP/1.1\r\nhost: SERVER\r\ncache-control: no-cache\r\npragma: no-cache\r\n" +
                  common + "connection: Keep-Alive\r\n\r\n" + "POST /d HTTP/1.1\r\nhost: SERVER\r\n" +
                  common +
                  "content-type: application/json\r\ncontent-length: 2\r\n"
                  "connection: Keep-Alive\r\n\r\n{}");
}

TEST(HttpClient, TellsAddressesThatNobodyAnswers) {
    EXPECT_EQ(outcomeOf({.address = "http://127.0.0.1:1/"}).code, NSURLErrorCannotConnectToHost);
    for (const char* address :
         {"", "ads", "http://", "ftp://127.0.0.1/", "file:///etc/hostname", "http://a:b@c/"})
        EXPECT_EQ(outcomeOf({.address = address}).code, NSURLErrorUnsupportedURL) << address;
}

TEST(HttpClient, BelievesOnlyServersThatProveWhoTheyAre) {
    const Certificate ours("IP:127.0.0.1"), others("DNS:example.com");
    const RawServer plain({httpAnswer("200 OK", "", "{}")});
    const RawAnswer good{httpAnswer("200 OK", "", "{}")};
    const RawAnswer insecure{httpAnswer("302 Found", "Location: " + plain.address() + "\r\n")};
    struct {
        const char* name;
        const Certificate& server;
        const Certificate& trusted;
        RawAnswer answer;
        long code;
    } const rows[] = {
        {"a trusted server", ours, ours, good, 0},
        {"an unknown one", ours, others, good, NSURLErrorSecureConnectionFailed},
        {"one that is another", others, others, good, NSURLErrorSecureConnectionFailed},
        {"one that refers to an insecure one", ours, ours, insecure, NSURLErrorSecureConnectionFailed},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        row.trusted.trust();
        const RawServer server(row.answer, &row.server);
        EXPECT_EQ(outcomeOf({.address = server.address(), .timeout = longTime}).code, row.code);
    }
    EXPECT_EQ(plain.received(), "");
}

TEST(HttpClient, ReachesAServerAgainThatWasGone) {
    ReferenceServer server;
    const HttpRequest question{.address = server.address("/ads?unit=a&format=banner")};
    EXPECT_NE(outcomeOf(question).body.find(server.address("/pictures/banner.png")), std::string::npos);
    server.stop();
    EXPECT_EQ(outcomeOf(question).code, NSURLErrorCannotConnectToHost);
    server.start();
    EXPECT_EQ(outcomeOf(question).code, 0);
    EXPECT_EQ(outcomeOf({.address = server.address("/analytics"), .body = "{\"a\":\"ä\"}"}).code, 0);

    EXPECT_TRUE(runEventLoopUntil([&] { return server.requests().size() >= 3; }));
    const std::string told = server.requests().at(2);
    EXPECT_NE(told.find(R"("method": "POST", "uri": "/analytics", "status": 204)"), told.npos) << told;
    EXPECT_NE(told.find(R"("body": "{\"a\":\"ä\"}")"), told.npos) << told;
}

TEST(HttpClient, LetsTheProgramEndWhileAServerIsStillAsked) {
    const RawServer server({"", "", false, false});
    const std::string silent = server.address();
    for (const std::string& address : {silent, "https" + silent.substr(4)})
        for (const char* role : {"leave the loop", "exit in the loop"}) {
            ChildProcess program(role, {"ADDRESS=" + address});
            EXPECT_EQ(program.wait(), 0) << role << ", " << address;
        }
}
