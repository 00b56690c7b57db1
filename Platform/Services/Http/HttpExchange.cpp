#include "Platform/Services/Http/HttpExchange.h"

#include "Platform/Dispatch/DispatchQueue.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QTimer>
#include <QUrl>
#include <utility>

namespace anadrome {

namespace {

NSError urlError(NSURLErrorCode code, std::string sentence) {
    return NSError(NSURLErrorDomain, code, std::move(sentence));
}

NSError timedOut() {
    return urlError(NSURLErrorTimedOut, "The server didn't answer in time.");
}

NSError tooLong() {
    return urlError(NSURLErrorDataLengthExceedsMaximum, "The server's answer is too long.");
}

int statusOf(const QNetworkReply& reply) {
    return reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
}

NSError badAnswer(const QNetworkReply& reply) {
    const int status = statusOf(reply);
    return {NSURLErrorDomain, NSURLErrorBadServerResponse, "The server's answer isn't what was asked for.",
            NSError(HTTPStatusDomain, status, "The status is " + std::to_string(status) + '.')};
}

NSError failure(const QNetworkReply& reply) {
    switch (reply.error()) {
    case QNetworkReply::ConnectionRefusedError:
    case QNetworkReply::HostNotFoundError:
    case QNetworkReply::TemporaryNetworkFailureError:
    case QNetworkReply::NetworkSessionFailedError:
    case QNetworkReply::ProxyConnectionRefusedError:
    case QNetworkReply::ProxyConnectionClosedError:
    case QNetworkReply::ProxyNotFoundError:
    case QNetworkReply::ProxyTimeoutError:
    case QNetworkReply::ProxyAuthenticationRequiredError:
    case QNetworkReply::UnknownProxyError:
    case QNetworkReply::UnknownNetworkError:
        return urlError(NSURLErrorCannotConnectToHost, "The server can't be reached.");
    case QNetworkReply::RemoteHostClosedError:
        return urlError(NSURLErrorNetworkConnectionLost, "The connection to the server was lost.");
    case QNetworkReply::SslHandshakeFailedError:
        return urlError(NSURLErrorSecureConnectionFailed, "The server doesn't prove who it is.");
    case QNetworkReply::InsecureRedirectError:
        return urlError(NSURLErrorSecureConnectionFailed, "The server refers to an insecure connection.");
    case QNetworkReply::TooManyRedirectsError:
        return urlError(NSURLErrorHTTPTooManyRedirects, "The server refers from address to address.");
    default:
        return badAnswer(reply);
    }
}

QNetworkRequest prepared(const HttpRequest& request) {
    QNetworkRequest prepared(QUrl(QString::fromStdString(request.address), QUrl::StrictMode));
    constexpr int mostRedirects = 5;
    prepared.setMaximumRedirectsAllowed(mostRedirects);
    // After a redirect a body may not be sent again, and the answer would be one to nothing.
    prepared.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                          request.body.empty() ? QNetworkRequest::NoLessSafeRedirectPolicy
                                               : QNetworkRequest::ManualRedirectPolicy);
    prepared.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    prepared.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    prepared.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
    prepared.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
    prepared.setAttribute(QNetworkRequest::CacheSaveControlAttribute, false);
    prepared.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    prepared.setHeader(QNetworkRequest::UserAgentHeader, "Anadrome/" ANADROME_VERSION);
    prepared.setRawHeader("Accept", "application/json");
    // Else Qt asks for the user's language.
    prepared.setRawHeader("Accept-Language", "*");
    // Else a small answer could unfold to a large one.
    prepared.setRawHeader("Accept-Encoding", "identity");
    if (!request.body.empty())
        prepared.setHeader(QNetworkRequest::ContentTypeHeader, "application/json");
    return prepared;
}

/// One question and what comes of it. The result is handed over when the object goes: on whatever way it
/// does, somebody waits for it.
class Exchange final : public QObject {
public:
    Exchange(QNetworkAccessManager& manager, const HttpRequest& request, HttpClient::Completion completion)
        : QObject(&manager), m_maximumLength(request.maximumLength), m_completion(std::move(completion)) {
        const QNetworkRequest question = prepared(request);
        m_reply = request.body.empty() ? manager.get(question)
                                       : manager.post(question, QByteArray::fromStdString(request.body));
        m_reply->setParent(this);
        // What isn't taken from the socket yet is held back by the system.
        m_reply->setReadBufferSize(largestPiece);
        connect(m_reply, &QNetworkReply::metaDataChanged, this, [this] { checkAnnouncedLength(); });
        connect(m_reply, &QNetworkReply::readyRead, this, [this] { takeArrived(); });
        connect(m_reply, &QNetworkReply::finished, this, [this] { finish(); });
        QTimer::singleShot(request.timeout, Qt::PreciseTimer, this, [this] { breakOff(timedOut()); });
    }

    ~Exchange() override {
        DispatchQueue::main().async(
            [completion = std::move(m_completion), result = std::move(m_result)]() mutable {
                completion(std::move(result));
            });
    }

private:
    void checkAnnouncedLength() {
        const QVariant length = m_reply->header(QNetworkRequest::ContentLengthHeader);
        if (length.isValid() && length.toULongLong() > m_maximumLength)
            breakOff(tooLong());
    }

    void takeArrived() {
        while (m_reply->bytesAvailable() > 0 && !m_isOver) {
            const QByteArray arrived = m_reply->read(largestPiece);
            if (static_cast<std::size_t>(arrived.size()) > m_maximumLength - m_body.size())
                breakOff(tooLong());
            else
                m_body.append(arrived.constData(), static_cast<std::size_t>(arrived.size()));
        }
    }

    void finish() {
        takeArrived();
        const int status = statusOf(*m_reply);
        if (m_reply->error() != QNetworkReply::NoError)
            end(failure(*m_reply));
        else if (status < 200 || status > 299)
            end(badAnswer(*m_reply));
        else
            end(std::move(m_body));
    }

    void breakOff(NSError error) {
        end(std::move(error));
        m_reply->abort();
    }

    /// The first end counts.
    void end(Result<std::string> result) {
        if (std::exchange(m_isOver, true))
            return;
        m_result = std::move(result);
        deleteLater();
    }

    static constexpr qint64 largestPiece = 64 * 1024;

    const std::size_t m_maximumLength;
    HttpClient::Completion m_completion;
    QNetworkReply* m_reply = nullptr;
    std::string m_body;
    bool m_isOver = false;
    Result<std::string> m_result =
        urlError(NSURLErrorNetworkConnectionLost, "The program ended before the server answered.");
};

} // namespace

void beginHttpExchange(QNetworkAccessManager& manager, const HttpRequest& request,
                       HttpClient::Completion completion) {
    new Exchange(manager, request, std::move(completion));
}

} // namespace anadrome
