#include "Tests/Support/Certificate.h"

#include <QSslCertificate>
#include <QSslConfiguration>
#include <cstdlib>
#include <stdexcept>

namespace anadrome::testing_support {

Certificate::Certificate(const std::string& subject) {
    const std::string command =
        "openssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -days 2"
        " -subj /CN=test -addext subjectAltName=" +
        subject + " -keyout " + keyFile() + " -out " + certificateFile() + " 2>/dev/null";
    if (std::system(command.c_str()) != 0)
        throw std::runtime_error("openssl makes no certificate");
}

void Certificate::trust() const {
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    configuration.setCaCertificates(QSslCertificate::fromPath(QString::fromStdString(certificateFile())));
    QSslConfiguration::setDefaultConfiguration(configuration);
}

} // namespace anadrome::testing_support
