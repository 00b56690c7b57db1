#include "Platform/Foundation/Interruption.h"

#include "Platform/Foundation/FileDescriptor.h"
#include "Platform/Foundation/Print.h"

#include <QSocketNotifier>
#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace anadrome {

namespace {

constexpr std::array endSignals{SIGINT, SIGTERM, SIGHUP};

/// Where the signals' handler, which may run on any thread, tells their numbers.
std::atomic<int> tellingEnd = -1;

void tell(int signal) {
    const int error = errno;
    const auto number = static_cast<unsigned char>(signal);
    [[maybe_unused]] const ssize_t written = ::write(tellingEnd, &number, 1);
    errno = error;
}

/// As for a run under nohup, or in the background of a script: whoever started it wants it to go on.
bool isIgnored(int signal) {
    struct sigaction current {};
    return ::sigaction(signal, nullptr, &current) == 0 && current.sa_handler == SIG_IGN;
}

void handleEndSignals(void (*handler)(int)) {
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    for (const int signal : endSignals)
        if (!isIgnored(signal))
            ::sigaction(signal, &action, nullptr);
}

/// On this thread, and in the program that takes the place of this one.
void holdEndSignalsBack() {
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : endSignals)
        sigaddset(&signals, signal);
    ::pthread_sigmask(SIG_BLOCK, &signals, nullptr);
}

} // namespace

class Interruption::Notifier {
public:
    explicit Notifier(std::function<void(int)> handler)
        : m_handler(std::move(handler)), m_notifier(openPipe(), QSocketNotifier::Read) {
        QObject::connect(&m_notifier, &QSocketNotifier::activated, [this] { deliver(); });
        tellingEnd = m_writeEnd.get();
        handleEndSignals(tell);
    }
    ~Notifier() {
        handleEndSignals(SIG_DFL);
        m_notifier.setEnabled(false);
    }
    Notifier(const Notifier&) = delete;
    Notifier& operator=(const Notifier&) = delete;

private:
    int openPipe() {
        int ends[2];
        if (::pipe2(ends, O_CLOEXEC | O_NONBLOCK) != 0)
            fatalError("There is no pipe for signals");
        m_readEnd = FileDescriptor(ends[0]);
        m_writeEnd = FileDescriptor(ends[1]);
        return ends[0];
    }

    void deliver() {
        unsigned char signal = 0;
        if (::read(m_readEnd.get(), &signal, 1) != 1)
            return;
        holdEndSignalsBack();
        m_handler(128 + signal);
    }

    std::function<void(int)> m_handler;
    FileDescriptor m_readEnd;
    FileDescriptor m_writeEnd;
    QSocketNotifier m_notifier;
};

Interruption::Interruption(std::function<void(int)> handler)
    : m_notifier(std::make_unique<Notifier>(std::move(handler))) {}

Interruption::~Interruption() = default;

} // namespace anadrome
