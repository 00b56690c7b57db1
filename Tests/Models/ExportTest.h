#pragma once

#include "Models/VideoEncoder.h"
#include "Platform/Foundation/NSUserDefaults.h"
#include "Tests/Support/ClipTest.h"
#include "Tests/Support/EventLoop.h"

#include <mutex>

namespace anadrome {

/// What the caller of an export gets to know, in the order in which it does.
struct ExportLog {
    std::string path;
    bool success = false;
    std::optional<std::string> message;
    int completions = 0;
    std::vector<float> progress;
    /// Whether the completion came on the thread of the call.
    bool endedByCaller = false;

    std::mutex mutex;
};

/// Runs exports as the app does, with the event loop of the main thread, and with preferences of its own.
class ExportTest : public testing_support::ClipTest {
protected:
    using Start = std::function<void(VideoEncoder&, const URL& output, VideoEncoder::ProgressHandler,
                                     VideoEncoder::Completion)>;

    ExportTest() {
        static const bool preferencesAreOurs = [] {
            NSUserDefaults::standardUserDefaults().keepInMemory();
            NSUserDefaults::standardUserDefaults().registerDefaults({{"resolutionIndexKey", 1}});
            return true;
        }();
        EXPECT_TRUE(preferencesAreOurs);
        NSUserDefaults::standardUserDefaults().removeObjectForKey("resolutionIndexKey");
    }

    static void setQuality(std::int64_t index) {
        NSUserDefaults::standardUserDefaults().setInteger(index, "resolutionIndexKey");
    }

    std::string newPath(const std::string& extension = ".mov") {
        return m_folder.file("output-" + std::to_string(++m_outputs) + extension);
    }

    std::shared_ptr<ExportLog> changeSpeed(const std::string& source, double speed,
                                           const std::string& output = {}) {
        return run(output, [&](VideoEncoder& encoder, const URL& url, auto progress, auto completion) {
            encoder.changeSpeed(URL::fileURLWithPath(source), url, typeOf(url), speed, progress, completion);
        });
    }
    std::shared_ptr<ExportLog> merge(const std::string& first, const std::string& second,
                                     const std::string& output = {}) {
        return run(output, [&](VideoEncoder& encoder, const URL& url, auto progress, auto completion) {
            encoder.merge(URL::fileURLWithPath(first), URL::fileURLWithPath(second), url, typeOf(url),
                          progress, completion);
        });
    }
    std::shared_ptr<ExportLog> compress(const std::string& source, const std::string& input,
                                        const std::string& output = {}) {
        return run(output, [&](VideoEncoder& encoder, const URL& url, const auto&, auto completion) {
            encoder.compressVideo(
                URL::fileURLWithPath(source), URL::fileURLWithPath(input), url, typeOf(url),
                [url, completion](const Result<URL>& result) {
                    EXPECT_TRUE(!result || *result == url);
                    completion(static_cast<bool>(result),
                               result ? std::nullopt : std::optional(result.error().localizedDescription()));
                });
        });
    }

private:
    static AVFileType typeOf(const URL& url) {
        return url.path().ends_with(".mp4") ? AVFileTypeMPEG4 : AVFileTypeQuickTimeMovie;
    }

    std::shared_ptr<ExportLog> run(const std::string& output, const Start& start) {
        const auto log = std::make_shared<ExportLog>();
        log->path = output.empty() ? newPath() : output;
        VideoEncoder encoder([](float) {});
        start(
            encoder, URL::fileURLWithPath(log->path),
            [log](float progress) {
                const std::lock_guard lock(log->mutex);
                log->progress.push_back(progress);
            },
            [log, caller = std::this_thread::get_id()](bool success, std::optional<std::string> message) {
                const std::lock_guard lock(log->mutex);
                log->success = success;
                log->message = std::move(message);
                log->endedByCaller = std::this_thread::get_id() == caller;
                ++log->completions;
            });
        const auto hasEnded = [&] {
            const std::lock_guard lock(log->mutex);
            return log->completions > 0;
        };
        EXPECT_TRUE(testing_support::runEventLoopUntil(hasEnded)) << "the export never ended";
        return log;
    }

    int m_outputs = 0;
};

} // namespace anadrome
