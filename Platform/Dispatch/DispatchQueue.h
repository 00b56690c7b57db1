#pragma once

#include <functional>
#include <memory>
#include <string>

namespace anadrome {

/// What an operation is for; asks for more or fewer threads of the global pool, never for an order.
enum class QualityOfService { userInteractive, userInitiated, utility, background };

/// Work to be done later and elsewhere, in the order given. Copies share one queue. Any thread.
///
/// - main(): the event loop of the main thread. Blocks wait until a QCoreApplication exists and runs.
/// - global(): many at a time, in no certain order; a block may take minutes.
/// - serial(): one at a time, first in, first out, on threads of the global pool.
///
/// Handing a block over happens before the block runs, and on a serial queue each block happens before the
/// next.
class DispatchQueue {
public:
    using Block = std::function<void()>;

    static DispatchQueue main();
    static DispatchQueue global(QualityOfService qualityOfService);
    static DispatchQueue serial(std::string label);

    /// Runs the block later, never inline. A serial queue lives until its last block has run.
    void async(Block block) const;

    const std::string& label() const;

    class Backend;

private:
    explicit DispatchQueue(std::shared_ptr<Backend> backend) : m_backend(std::move(backend)) {}

    std::shared_ptr<Backend> m_backend;
};

} // namespace anadrome
