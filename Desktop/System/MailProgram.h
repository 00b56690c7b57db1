#pragma once

#include <QProcess>

namespace anadrome::desktop {

/// Knows whether the user has a mail program. Asks the desktop when it is made; until the answer, nobody is
/// known. Main thread only.
class MailProgram {
public:
    MailProgram();

    bool exists() const { return m_exists; }

private:
    bool m_exists = false;
    QProcess m_question;
};

} // namespace anadrome::desktop
