// Makes a movie of a clip backward with libanadrome: reverse CLIP MOVIE.mov
#include <Models/MovieJob.h>
#include <Platform/Foundation/TemporaryDirectory.h>
#include <QCoreApplication>
#include <filesystem>
#include <iostream>

using namespace anadrome;

struct Watcher : MovieJob::Observer {
    std::optional<MovieJob::Outcome> outcome;
    void jobProgressed(const MovieJob& job) override { std::cerr << int(job.fraction() * 100) << " %\r"; }
    void jobEnded(const MovieJob&, const MovieJob::Outcome& end) override {
        outcome = end;
        QCoreApplication::quit();
    }
};

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv); // jobs report through its event loop
    if (argc != 3)
        return std::cerr << "usage: reverse CLIP MOVIE.mov\n", 2;
    const auto job =
        MovieJob::make(MovieRecipe::reversalOnly(AVFileTypeQuickTimeMovie), URL::fileURLWithPath(argv[1]));
    const auto watcher = std::make_shared<Watcher>();
    job->addObserver(watcher);
    job->start();
    QCoreApplication::exec();
    const auto* movie = std::get_if<MovieJob::Movie>(&*watcher->outcome);
    std::error_code error;
    if (movie) // work files go with the program
        std::filesystem::copy_file(movie->url.path(), argv[2], error);
    else if (const auto* failure = std::get_if<MovieJob::Failure>(&*watcher->outcome))
        std::cerr << failure->message << '\n';
    TemporaryDirectory::remove();
    return movie && !error ? 0 : 1;
}
