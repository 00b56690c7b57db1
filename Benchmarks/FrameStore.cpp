#include "Models/VideoFrameManager.h"
#include "Platform/CoreVideo/CVPixelBuffer.h"
#include "Platform/Foundation/NSFileManager.h"
#include "Platform/Foundation/TemporaryDirectory.h"

#include <QCoreApplication>
#include <benchmark/benchmark.h>

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

// The frame store against the bare system calls: the same bytes, one file a frame, in a folder beside the
// store's. The plain side does without metadata, but reads into new memory each time too, as a loaded frame
// is a new buffer.

namespace {

using namespace anadrome;

constexpr int frameCount = 64;
/// Loaded frames that are kept, as the encoder's queue keeps some. Memory given back at once would stay in
/// the caches.
constexpr int heldCount = 4;
constexpr std::size_t width = 1920;
constexpr std::size_t height = 1080;

std::span<std::byte> planeOf(const CVPixelBufferRef& buffer, std::size_t plane) {
    return {static_cast<std::byte*>(CVPixelBufferGetBaseAddressOfPlane(buffer, plane)),
            CVPixelBufferGetBytesPerRowOfPlane(buffer, plane) * CVPixelBufferGetHeightOfPlane(buffer, plane)};
}

/// A frame whose bytes are all in memory.
CVPixelBufferRef makeFrame(OSType format) {
    CVPixelBufferRef frame;
    if (CVPixelBufferCreate(width, height, format, {}, &frame) != kCVReturnSuccess)
        std::abort();
    CVPixelBufferLockBaseAddress(frame, 0);
    for (std::size_t plane = 0; plane < CVPixelBufferGetPlaneCount(frame); ++plane) {
        const std::span<std::byte> bytes = planeOf(frame, plane);
        std::memset(bytes.data(), 0x51, bytes.size());
    }
    CVPixelBufferUnlockBaseAddress(frame, 0);
    return frame;
}

std::size_t bytesOf(const CVPixelBufferRef& frame) {
    CVPixelBufferLockBaseAddress(frame, kCVPixelBufferLock_ReadOnly);
    std::size_t bytes = 0;
    for (std::size_t plane = 0; plane < CVPixelBufferGetPlaneCount(frame); ++plane)
        bytes += planeOf(frame, plane).size();
    CVPixelBufferUnlockBaseAddress(frame, kCVPixelBufferLock_ReadOnly);
    return bytes;
}

/// The plain side: a folder beside the store's, and one file a frame.
class PlainFiles {
public:
    explicit PlainFiles(std::size_t frameBytes)
        : m_folder(NSFileManager::defaultManager().temporaryDirectory().path() + "/Plain"),
          m_source(std::make_unique<std::byte[]>(frameBytes)), m_frameBytes(frameBytes) {
        ::mkdir(m_folder.c_str(), 0700);
        std::memset(m_source.get(), 0x51, frameBytes);
    }

    bool write(int index) const {
        const int file = ::open(pathOf(index).c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
        const ssize_t written = ::write(file, m_source.get(), m_frameBytes);
        return ::close(file) == 0 && written == static_cast<ssize_t>(m_frameBytes);
    }

    /// Null if the file isn't there whole.
    std::unique_ptr<std::byte[]> read(int index) const {
        auto target = std::make_unique_for_overwrite<std::byte[]>(m_frameBytes);
        const int file = ::open(pathOf(index).c_str(), O_RDONLY | O_CLOEXEC);
        const ssize_t got = ::read(file, target.get(), m_frameBytes);
        ::close(file);
        return got == static_cast<ssize_t>(m_frameBytes) ? std::move(target) : nullptr;
    }

    void removeAll() const {
        for (int index = 0; index < frameCount; ++index)
            ::unlink(pathOf(index).c_str());
    }

private:
    std::string pathOf(int index) const { return m_folder + "/frame_" + std::to_string(index) + ".data"; }

    std::string m_folder;
    std::unique_ptr<std::byte[]> m_source;
    std::size_t m_frameBytes;
};

/// What is done with each frame; true if it worked.
using Step = std::function<bool(int index)>;

bool forEachFrame(const Step& step) {
    for (int index = 0; index < frameCount; ++index)
        if (!step(index))
            return false;
    return true;
}

struct Round {
    Step prepare; ///< not timed
    Step action;
    Step check; ///< not timed
    std::function<void()> removeAll;
};

/// Times one round a turn, from a disk that has nothing left to write.
void measure(benchmark::State& state, std::size_t frameBytes, const Round& round) {
    for ([[maybe_unused]] auto turn : state) {
        const bool prepared = forEachFrame(round.prepare);
        ::sync();
        const auto start = std::chrono::steady_clock::now();
        const bool acted = forEachFrame(round.action);
        const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
        const bool checked = forEachFrame(round.check);
        round.removeAll();
        if (!prepared || !acted || !checked) {
            state.SkipWithError("a frame couldn't be written or read");
            break;
        }
        state.SetIterationTime(elapsed.count());
    }
    state.SetBytesProcessed(state.iterations() * frameCount * static_cast<std::int64_t>(frameBytes));
}

bool nothing(int) {
    return true;
}

/// Makes frames and holds the latest of them.
template <typename Make>
Step holding(Make make) {
    using Frame = decltype(make(0));
    const auto held = std::make_shared<std::array<Frame, heldCount>>();
    return [=](int index) {
        Frame& frame = (*held)[static_cast<std::size_t>(index % heldCount)];
        frame = make(index);
        return frame != nullptr;
    };
}

Step loading() {
    return holding(VideoFrameManager::loadFrame);
}

/// Saving doesn't tell whether it worked.
Step saving(const CVPixelBufferRef& frame) {
    return [frame](int index) {
        VideoFrameManager::saveFrame(frame, index);
        return true;
    };
}

void saveFrames(benchmark::State& state, OSType format) {
    const CVPixelBufferRef frame = makeFrame(format);
    measure(state, bytesOf(frame), {nothing, saving(frame), loading(), VideoFrameManager::removeAllFrames});
}

void loadFrames(benchmark::State& state, OSType format) {
    const CVPixelBufferRef frame = makeFrame(format);
    measure(state, bytesOf(frame), {saving(frame), loading(), nothing, VideoFrameManager::removeAllFrames});
}

void writePlainly(benchmark::State& state, OSType format) {
    const std::size_t bytes = bytesOf(makeFrame(format));
    const PlainFiles files(bytes);
    const Step write = [&](int index) { return files.write(index); };
    const Step read = holding([&](int index) { return files.read(index); });
    measure(state, bytes, {nothing, write, read, [&] { files.removeAll(); }});
}

void readPlainly(benchmark::State& state, OSType format) {
    const std::size_t bytes = bytesOf(makeFrame(format));
    const PlainFiles files(bytes);
    const Step write = [&](int index) { return files.write(index); };
    const Step read = holding([&](int index) { return files.read(index); });
    measure(state, bytes, {write, read, nothing, [&] { files.removeAll(); }});
}

void registerFormat(const std::string& name, OSType format) {
    const auto add = [&](const std::string& action, void (*function)(benchmark::State&, OSType)) {
        benchmark::RegisterBenchmark((action + "/" + name).c_str(), function, format)
            ->UseManualTime()
            ->Iterations(1)
            ->Unit(benchmark::kMillisecond);
    };
    add("saveFrame", saveFrames);
    add("write", writePlainly);
    add("loadFrame", loadFrames);
    add("read", readPlainly);
}

} // namespace

int main(int argc, char** argv) {
    TemporaryDirectory::finishRemovalIfAsked(argc, argv);
    QCoreApplication application(argc, argv);
    registerFormat("420v", kCVPixelFormatType_420YpCbCr8BiPlanarVideoRange);
    registerFormat("x420", kCVPixelFormatType_420YpCbCr10BiPlanarVideoRange);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    TemporaryDirectory::remove();
    return 0;
}
