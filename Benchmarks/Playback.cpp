// Plays a clip backwards as a screen would, for the benchmarks: to its beginning, or to the first picture.

#include "Platform/AVFoundation/AVPlayerLayer.h"
#include "Platform/Foundation/NSNotificationCenter.h"

#include <CLI/CLI.hpp>
#include <QCoreApplication>
#include <iostream>
#include <malloc.h>

namespace {

using namespace anadrome;

struct Options {
    std::string input;
    float rate = -1;
    CGSize surface{1920, 1080};
    bool onlyFirst = false;
};

class CountingSink final : public PictureSink {
public:
    explicit CountingSink(bool onlyFirst) : m_onlyFirst(onlyFirst) {}

    void show(const ShownPicture&) override {
        ++count;
        if (m_onlyFirst)
            QCoreApplication::exit(0);
    }
    int count = 0;

private:
    const bool m_onlyFirst;
};

} // namespace

int main(int argc, char** argv) {
    ::mallopt(M_ARENA_MAX, 2);
    QCoreApplication application(argc, argv);
    CLI::App parser("Plays a clip backwards without a screen.");
    Options options;
    parser.add_option("input", options.input)->required()->check(CLI::ExistingFile);
    parser.add_option("--rate", options.rate)->check(CLI::Range(-10.0, -0.1));
    parser.add_option("--width", options.surface.width);
    parser.add_option("--height", options.surface.height);
    parser.add_flag("--only-first", options.onlyFirst);
    CLI11_PARSE(parser, argc, argv);

    const auto sink = std::make_shared<CountingSink>(options.onlyFirst);
    const auto player = std::make_shared<AVPlayer>(URL::fileURLWithPath(options.input));
    AVPlayerLayer layer;
    layer.setSurface(sink, options.surface);
    layer.setPlayer(player);
    NSNotificationCenter::defaultCenter().addObserverForName(
        AVPlayerItemDidPlayToEndTimeNotification, player->currentItem(),
        [](const NSNotification&) { QCoreApplication::exit(0); });
    DispatchQueue::main().async([&] {
        const auto giveUp = [&](bool finished) {
            if (finished)
                return;
            std::cerr << options.input << " can't be played" << std::endl;
            QCoreApplication::exit(1);
        };
        player->seekToTime(player->currentItem()->asset()->duration(), kCMTimeZero, kCMTimeZero, giveUp);
        player->setRate(options.rate);
    });
    const int status = QCoreApplication::exec();
    std::cout << sink->count << std::endl;
    return sink->count > 0 ? status : 1;
}
