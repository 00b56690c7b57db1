#pragma once

#include <cstddef>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

namespace anadrome {

/// Reads the fields of a server's answer, an object in JSON, and keeps the first fault that it has. Once
/// there is one, what the fields give is of no use. Never throws, whatever the server sent.
class AnswerFields {
public:
    static AnswerFields parse(const std::string& answer);

    /// Empty while all is well.
    const std::string& fault() const { return m_fault; }
    void setFault(std::string fault);

    /// A field that isn't there gives an empty value; one that is there has to be of this kind.
    std::string text(const std::string& name, std::size_t longest);
    /// A whole address of http or https.
    std::string address(const std::string& name);
    std::optional<double> number(const std::string& name, double least, double largest);
    std::optional<bool> boolean(const std::string& name);
    /// A text by its languages: in that one, else in English.
    std::string localizedText(const std::string& name, const std::string& language, std::size_t longest);
    std::vector<AnswerFields> objects(const std::string& name, std::size_t most);

private:
    explicit AnswerFields(nlohmann::json value);

    /// Null if there is no such field.
    const nlohmann::json* find(const std::string& name) const;

    nlohmann::json m_object;
    std::string m_fault;
};

} // namespace anadrome
