#include "Platform/AVFoundation/Capture/V4L2Cameras.h"

#include "Platform/AVFoundation/Capture/CameraMode.h"
#include "Platform/Foundation/FileDescriptor.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <fcntl.h>
#include <linux/videodev2.h>
#include <sys/ioctl.h>

namespace anadrome::capture {

namespace {

constexpr int highestNumber = 63;
/// Asked of cameras that take any rate in a range.
constexpr double usualRate = 30;

/// The kernel's code of each kind of picture that is understood here, and the media library's name.
constexpr struct {
    std::uint32_t code;
    const char* name;
} pictureFormats[] = {
    {V4L2_PIX_FMT_NV12, "nv12"},    {V4L2_PIX_FMT_YUV420, "yuv420p"}, {V4L2_PIX_FMT_YUYV, "yuyv422"},
    {V4L2_PIX_FMT_UYVY, "uyvy422"}, {V4L2_PIX_FMT_MJPEG, "mjpeg"},
};

/// Asked of cameras that take any size in a range.
constexpr struct {
    std::uint32_t width;
    std::uint32_t height;
} usualSizes[] = {{1920, 1080}, {1280, 720}, {640, 480}};

double rateFrom(const v4l2_fract& interval) {
    return interval.numerator > 0 ? static_cast<double>(interval.denominator) / interval.numerator : 0;
}

/// Asks a camera for its modes, format by format, size by size.
class ModeQuestion {
public:
    explicit ModeQuestion(int camera) : m_camera(camera) {}

    std::vector<CameraMode> ask() {
        for (const auto& format : pictureFormats)
            askForSizes(format.code, format.name);
        return std::move(m_modes);
    }

private:
    void askForSizes(std::uint32_t code, const char* name) {
        v4l2_frmsizeenum size{};
        size.pixel_format = code;
        for (; ::ioctl(m_camera, VIDIOC_ENUM_FRAMESIZES, &size) == 0; ++size.index) {
            if (size.type == V4L2_FRMSIZE_TYPE_DISCRETE) {
                askForRates(code, name, size.discrete.width, size.discrete.height);
                continue;
            }
            for (const auto& [width, height] : usualSizes)
                if (std::clamp(width, size.stepwise.min_width, size.stepwise.max_width) == width &&
                    std::clamp(height, size.stepwise.min_height, size.stepwise.max_height) == height)
                    askForRates(code, name, width, height);
            return;
        }
    }

    void askForRates(std::uint32_t code, const char* name, std::uint32_t width, std::uint32_t height) {
        CameraMode mode{name, static_cast<int>(width), static_cast<int>(height), 0};
        v4l2_frmivalenum interval{};
        interval.pixel_format = code;
        interval.width = width;
        interval.height = height;
        for (; ::ioctl(m_camera, VIDIOC_ENUM_FRAMEINTERVALS, &interval) == 0; ++interval.index) {
            if (interval.type != V4L2_FRMIVAL_TYPE_DISCRETE) {
                mode.pictureRate = std::min(rateFrom(interval.stepwise.min), usualRate);
                break;
            }
            mode.pictureRate = rateFrom(interval.discrete);
            m_modes.push_back(mode);
        }
        // A range of rates, or a driver that tells none.
        if (interval.index == 0)
            m_modes.push_back(mode);
    }

    const int m_camera;
    std::vector<CameraMode> m_modes;
};

/// One camera may have several devices, and only one of them gives pictures.
bool givesPictures(int device) {
    v4l2_capability told{};
    if (::ioctl(device, VIDIOC_QUERYCAP, &told) != 0)
        return false;
    const std::uint32_t can = told.capabilities & V4L2_CAP_DEVICE_CAPS ? told.device_caps : told.capabilities;
    return (can & V4L2_CAP_VIDEO_CAPTURE) != 0 && (can & V4L2_CAP_STREAMING) != 0;
}

std::string nameOf(int camera) {
    v4l2_capability told{};
    ::ioctl(camera, VIDIOC_QUERYCAP, &told);
    const auto* name = reinterpret_cast<const char*>(told.card);
    return {name, ::strnlen(name, sizeof told.card)};
}

std::map<std::string, std::string> optionsFor(const CameraMode& mode) {
    // Times of the wall clock, like those of sound.
    std::map<std::string, std::string> options{{"timestamps", "abs"}, {"input_format", mode.format}};
    options["video_size"] = std::to_string(mode.width) + "x" + std::to_string(mode.height);
    if (mode.pictureRate > 0)
        options["framerate"] = std::to_string(mode.pictureRate);
    return options;
}

} // namespace

std::vector<AVCaptureDevice> v4l2Cameras() {
    std::vector<AVCaptureDevice> cameras;
    for (int number = 0; number <= highestNumber; ++number) {
        const std::string address = "/dev/video" + std::to_string(number);
        const FileDescriptor device(::open(address.c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC));
        if (!device || !givesPictures(device.get()))
            continue;
        if (const std::optional<CameraMode> mode = bestMode(ModeQuestion(device.get()).ask()))
            cameras.push_back({nameOf(device.get()), "v4l2", address, optionsFor(*mode)});
    }
    return cameras;
}

} // namespace anadrome::capture
