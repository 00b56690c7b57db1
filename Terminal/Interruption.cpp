#include "Terminal/Interruption.h"

#include <QSocketNotifier>
#include <csignal>
#include <sys/signalfd.h>
#include <unistd.h>

namespace anadrome::terminal {

class Interruption::Notifier {
public:
    explicit Notifier(std::function<void(int)> handler)
        : m_descriptor(openSignals()), m_handler(std::move(handler)),
          m_notifier(m_descriptor, QSocketNotifier::Read) {
        QObject::connect(&m_notifier, &QSocketNotifier::activated, [this] { deliver(); });
    }
    ~Notifier() {
        m_notifier.setEnabled(false);
        ::close(m_descriptor);
    }
    Notifier(const Notifier&) = delete;
    Notifier& operator=(const Notifier&) = delete;

private:
    static int openSignals() {
        sigset_t signals;
        sigemptyset(&signals);
        for (const int signal : {SIGINT, SIGTERM, SIGHUP})
            if (!isIgnored(signal))
                sigaddset(&signals, signal);
        pthread_sigmask(SIG_BLOCK, &signals, nullptr);
        return ::signalfd(-1, &signals, SFD_CLOEXEC | SFD_NONBLOCK);
    }

    /// As for a run under nohup, or in the background of a script: whoever started it wants it to go on.
    static bool isIgnored(int signal) {
        struct sigaction current {};
        return ::sigaction(signal, nullptr, &current) == 0 && current.sa_handler == SIG_IGN;
    }

    void deliver() {
        signalfd_siginfo info{};
        if (::read(m_descriptor, &info, sizeof info) == static_cast<ssize_t>(sizeof info))
            m_handler(128 + static_cast<int>(info.ssi_signo));
    }

    const int m_descriptor;
    std::function<void(int)> m_handler;
    QSocketNotifier m_notifier;
};

Interruption::Interruption(std::function<void(int)> handler)
    : m_notifier(std::make_unique<Notifier>(std::move(handler))) {}

Interruption::~Interruption() = default;

} // namespace anadrome::terminal
