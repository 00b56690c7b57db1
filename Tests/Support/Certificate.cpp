#include "Tests/Support/Certificate.h"

#include <QProcess>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <stdexcept>

namespace anadrome::testing_support {

Certificate::Certificate(const std::string& subject) {
    QProcess openssl;
    openssl.start("openssl",
                  {"req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:prime256v1", "-nodes",
                   "-days", "2", "-subj", "/CN=test", "-addext",
                   QString::fromStdString("subjectAltName=" + subject), "-keyout",
                   QString::fromStdString(keyFile()), "-out", QString::fromStdString(certificateFile())});
    if (!openssl.waitForFinished() || openssl.exitCode() != 0)
        throw std::runtime_error("openssl makes no certificate");
}

void Certificate::trust() const {
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    configuration.setCaCertificates(QSslCertificate::fromPath(QString::fromStdString(certificateFile())));
    QSslConfiguration::setDefaultConfiguration(configuration);
}

} // namespace anadrome::testing_support
