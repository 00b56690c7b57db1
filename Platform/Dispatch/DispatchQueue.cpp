#include "Platform/Dispatch/DispatchQueue.h"

#include "Platform/Foundation/Print.h"

#include <QCoreApplication>
#include <QEvent>
#include <QObject>
#include <QRunnable>
#include <QThreadPool>
#include <deque>
#include <mutex>
#include <optional>
#include <utility>

#ifdef __SANITIZE_THREAD__
/// Packaged Qt isn't built for the thread sanitizer, which therefore doesn't see how Qt orders its own
/// memory. Accesses of our own code are checked all the same.
extern "C" const char* __tsan_default_suppressions() {
    return "called_from_lib:libQt6Core.so\n"
           "called_from_lib:libQt6Network.so\n";
}
#endif

// Qt only wakes threads up here. Blocks pass from thread to thread through deques under a mutex of ours, so
// that the order of memory doesn't hang on what Qt does inside.
//
// The main queue and the pools are never destroyed: a block may still run, or hand over another, while the
// program's statics are torn down. The system ends the threads with the process.

namespace anadrome {

class DispatchQueue::Backend {
public:
    explicit Backend(std::string label) : m_label(std::move(label)) {}
    virtual ~Backend() = default;
    virtual void async(Block block) = 0;
    const std::string& label() const { return m_label; }

private:
    std::string m_label;
};

namespace {

using Block = DispatchQueue::Block;

/// Blocks in order. Not locked.
class Blocks {
public:
    void add(Block block) { m_blocks.push_back(std::move(block)); }
    std::size_t count() const { return m_blocks.size(); }
    std::optional<Block> take() {
        if (m_blocks.empty())
            return std::nullopt;
        Block block = std::move(m_blocks.front());
        m_blocks.pop_front();
        return block;
    }

private:
    std::deque<Block> m_blocks;
};

/// Threads that run blocks as they come. Every added block is matched by one call of run() on some thread.
class GlobalQueue final : public DispatchQueue::Backend, private QRunnable {
public:
    explicit GlobalQueue(std::string label) : Backend(std::move(label)) {
        // Blocks may wait for each other and for disks for long; idle threads end by themselves.
        constexpr int maximumThreads = 64;
        m_pool.setMaxThreadCount(maximumThreads);
        setAutoDelete(false);
    }

    void async(Block block) override {
        std::lock_guard lock(m_mutex);
        m_blocks.add(std::move(block));
        m_pool.start(this);
    }

private:
    void run() override {
        if (const auto block = take())
            (*block)();
    }

    std::optional<Block> take() {
        std::lock_guard lock(m_mutex);
        return m_blocks.take();
    }

    std::mutex m_mutex;
    Blocks m_blocks;
    QThreadPool m_pool;
};

/// One pool for each quality, so that long blocks of one don't hold up another, and one for the serial
/// queues.
struct GlobalQueues {
    std::shared_ptr<GlobalQueue> userInteractive = std::make_shared<GlobalQueue>("global.user-interactive");
    std::shared_ptr<GlobalQueue> userInitiated = std::make_shared<GlobalQueue>("global.user-initiated");
    std::shared_ptr<GlobalQueue> utility = std::make_shared<GlobalQueue>("global.utility");
    std::shared_ptr<GlobalQueue> background = std::make_shared<GlobalQueue>("global.background");
    std::shared_ptr<GlobalQueue> serial = std::make_shared<GlobalQueue>("global.default");

    static GlobalQueues& shared() {
        static GlobalQueues& queues = *new GlobalQueues;
        return queues;
    }

    std::shared_ptr<GlobalQueue> of(QualityOfService quality) const {
        switch (quality) {
        case QualityOfService::userInteractive:
            return userInteractive;
        case QualityOfService::userInitiated:
            return userInitiated;
        case QualityOfService::utility:
            return utility;
        case QualityOfService::background:
            return background;
        }
        return utility;
    }
};

/// Lives until its blocks have run: the drain that runs them holds it.
class SerialQueue final : public DispatchQueue::Backend, public std::enable_shared_from_this<SerialQueue> {
public:
    explicit SerialQueue(std::string label) : Backend(std::move(label)) {}

    void async(Block block) override {
        std::lock_guard lock(m_mutex);
        m_blocks.add(std::move(block));
        if (!std::exchange(m_isDraining, true))
            GlobalQueues::shared().serial->async([self = shared_from_this()] { self->drain(); });
    }

private:
    void drain() {
        while (const auto block = take())
            (*block)();
    }

    std::optional<Block> take() {
        std::lock_guard lock(m_mutex);
        auto block = m_blocks.take();
        m_isDraining = block.has_value();
        return block;
    }

    std::mutex m_mutex;
    Blocks m_blocks;
    bool m_isDraining = false;
};

/// One posted event for each block: so a block never runs inline, and the loop gets to its other events
/// between blocks. Blocks that come before there is an application wait for it.
class MainQueue final : public DispatchQueue::Backend {
public:
    static const std::shared_ptr<MainQueue>& shared() {
        // Runs at once if there is an application, else when it is made.
        static const bool isRegistered = (qAddPreRoutine([] { instance()->attach(); }), true);
        (void)isRegistered;
        return instance();
    }

    MainQueue() : Backend("main") {}

    void async(Block block) override {
        std::lock_guard lock(m_mutex);
        m_blocks.add(std::move(block));
        if (m_receiver)
            postEvent();
    }

private:
    static const std::shared_ptr<MainQueue>& instance() {
        static const auto& queue = *new std::shared_ptr<MainQueue>(std::make_shared<MainQueue>());
        return queue;
    }

    /// Gets the events on the main thread.
    class Receiver final : public QObject {
    public:
        void customEvent(QEvent*) override { MainQueue::shared()->runOne(); }
    };

    void attach() {
        std::lock_guard lock(m_mutex);
        if (m_receiver)
            return;
        m_receiver = new Receiver;
        m_receiver->moveToThread(QCoreApplication::instance()->thread());
        for (std::size_t i = 0; i < m_blocks.count(); ++i)
            postEvent();
    }

    /// Under the mutex, so that the event that one thread makes is seen to be made before another frees it.
    void postEvent() { QCoreApplication::postEvent(m_receiver, new QEvent(QEvent::User)); }

    void runOne() {
        if (const auto block = take())
            (*block)();
    }

    std::optional<Block> take() {
        std::lock_guard lock(m_mutex);
        return m_blocks.take();
    }

    std::mutex m_mutex;
    Blocks m_blocks;
    Receiver* m_receiver = nullptr;
};

} // namespace

DispatchQueue DispatchQueue::main() {
    return DispatchQueue(MainQueue::shared());
}

DispatchQueue DispatchQueue::global(QualityOfService qualityOfService) {
    return DispatchQueue(GlobalQueues::shared().of(qualityOfService));
}

DispatchQueue DispatchQueue::serial(std::string label) {
    return DispatchQueue(std::make_shared<SerialQueue>(std::move(label)));
}

void DispatchQueue::async(Block block) const {
    if (!block)
        fatalError("A queue was given an empty block.");
    m_backend->async(std::move(block));
}

const std::string& DispatchQueue::label() const {
    return m_backend->label();
}

} // namespace anadrome
