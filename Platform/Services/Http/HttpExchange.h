#pragma once

#include "Platform/Services/Http/HttpClient.h"

class QNetworkAccessManager;

namespace anadrome {

/// Asks a server through the manager, on the manager's thread. Completes once, on the main queue; with a lost
/// connection if the manager goes before the exchange has ended.
void beginHttpExchange(QNetworkAccessManager& manager, const HttpRequest& request,
                       HttpClient::Completion completion);

} // namespace anadrome
