#pragma once

#include "Tests/Support/ClipTest.h"
#include "Tests/Support/MovieReader.h"
#include "Tests/Support/Shell.h"
#include "Tests/Terminal/CommandRunner.h"

#include <nlohmann/json.hpp>
#include <sstream>

namespace anadrome {

/// Runs of anadrome-cli with a cache folder, a configuration and an output folder of their own.
class CommandTest : public testing_support::ClipTest {
protected:
    CommandTest() {
        std::filesystem::create_directory(out());
        m_surroundings.cache = m_folder.path() / "cache";
        m_surroundings.configuration = m_folder.path() / "config";
    }

    std::filesystem::path out() const { return m_folder.path() / "out"; }
    testing_support::CommandResult run(std::vector<std::string> arguments,
                                       const std::vector<std::string>& more = {}) const {
        arguments.insert(arguments.end(), more.begin(), more.end());
        return testing_support::runCli(arguments, m_surroundings);
    }

    /// Neither the output folder nor the cache holds anything that shouldn't be there.
    void expectNoLeftovers(std::size_t movies = 0) const {
        EXPECT_EQ(std::distance(std::filesystem::directory_iterator(out()), {}),
                  static_cast<std::ptrdiff_t>(movies));
        const std::filesystem::path base = m_surroundings.cache / "anadrome";
        if (!std::filesystem::exists(base))
            return;
        for (const auto& entry : std::filesystem::directory_iterator(base))
            EXPECT_EQ(entry.path().filename(), "sweep.lock");
    }

    static std::vector<int> numbers(const std::string& movie) {
        std::vector<int> numbers;
        for (const auto& number : testing_support::readMovie(movie).video.at(0).numbers())
            numbers.push_back(number.value_or(-1));
        return numbers;
    }

    /// What a shell command prints to either stream.
    static std::string outputOf(const std::string& command) {
        return testing_support::outputOf(command + " 2>&1");
    }
    static std::vector<nlohmann::json> jsonLines(const std::string& text) {
        std::vector<nlohmann::json> lines;
        std::istringstream stream(text);
        for (std::string line; std::getline(stream, line);)
            lines.push_back(nlohmann::json::parse(line));
        return lines;
    }

    testing_support::CommandSurroundings m_surroundings;
};

} // namespace anadrome
