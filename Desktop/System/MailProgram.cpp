#include "Desktop/System/MailProgram.h"

namespace anadrome::desktop {

MailProgram::MailProgram() {
    QObject::connect(&m_question, &QProcess::finished, &m_question,
                     [this] { m_exists = !m_question.readAllStandardOutput().trimmed().isEmpty(); });
    m_question.start("xdg-mime", {"query", "default", "x-scheme-handler/mailto"});
}

} // namespace anadrome::desktop
