#include "Platform/Services/Http/AnswerFields.h"

#include "Platform/Services/Http/HttpAddress.h"

#include <algorithm>
#include <utility>

namespace anadrome {

namespace {

/// In characters, not bytes.
std::size_t lengthOf(const std::string& text) {
    return static_cast<std::size_t>(
        std::ranges::count_if(text, [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; }));
}

} // namespace

AnswerFields AnswerFields::parse(const std::string& answer) {
    // Values are copied level by level on the stack, which a deep one would overflow.
    constexpr int deepest = 16;
    bool isTooDeep = false;
    const auto isToBeKept = [&](int depth, nlohmann::json::parse_event_t, const nlohmann::json&) {
        isTooDeep = isTooDeep || depth > deepest;
        return !isTooDeep;
    };
    // Text that isn't UTF-8 is no JSON either.
    AnswerFields fields(nlohmann::json::parse(answer, isToBeKept, false));
    if (isTooDeep)
        fields.m_fault = "it is too deep";
    return fields;
}

AnswerFields::AnswerFields(nlohmann::json value) : m_object(std::move(value)) {
    if (m_object.is_discarded())
        setFault("it is no JSON");
    else if (!m_object.is_object())
        setFault("it is no object");
}

void AnswerFields::setFault(std::string fault) {
    if (m_fault.empty())
        m_fault = std::move(fault);
}

const nlohmann::json* AnswerFields::find(const std::string& name) const {
    if (!m_object.is_object())
        return nullptr;
    const auto field = m_object.find(name);
    return field != m_object.end() ? &*field : nullptr;
}

std::string AnswerFields::text(const std::string& name, std::size_t longest) {
    const nlohmann::json* field = find(name);
    if (!field)
        return "";
    const auto* text = field->get_ptr<const std::string*>();
    if (text && lengthOf(*text) <= longest)
        return *text;
    setFault(name + " is no text of at most " + std::to_string(longest) + " characters");
    return "";
}

std::string AnswerFields::address(const std::string& name) {
    constexpr std::size_t longest = 8192;
    std::string address = text(name, longest);
    if (!address.empty() && !isHttpAddress(address))
        setFault(name + " is no http or https address");
    return address;
}

std::optional<double> AnswerFields::number(const std::string& name, double least, double largest) {
    const nlohmann::json* field = find(name);
    if (!field)
        return std::nullopt;
    if (field->is_number()) {
        const double number = field->get<double>();
        if (number >= least && number <= largest)
            return number;
    }
    setFault(name + " is no number in its bounds");
    return std::nullopt;
}

std::optional<bool> AnswerFields::boolean(const std::string& name) {
    const nlohmann::json* field = find(name);
    if (!field)
        return std::nullopt;
    if (field->is_boolean())
        return field->get<bool>();
    setFault(name + " is neither true nor false");
    return std::nullopt;
}

std::string AnswerFields::localizedText(const std::string& name, const std::string& language,
                                        std::size_t longest) {
    const nlohmann::json* field = find(name);
    if (!field)
        return "";
    AnswerFields texts(*field);
    std::string text = texts.text(texts.find(language) ? language : "en", longest);
    if (text.empty())
        texts.setFault("it has no text");
    if (!texts.fault().empty())
        setFault("in " + name + ", " + texts.fault());
    return text;
}

std::vector<AnswerFields> AnswerFields::objects(const std::string& name, std::size_t most) {
    const nlohmann::json* field = find(name);
    std::vector<AnswerFields> objects;
    if (!field)
        return objects;
    if (!field->is_array() || field->size() > most) {
        setFault(name + " is no list of at most " + std::to_string(most));
        return objects;
    }
    for (const nlohmann::json& element : *field)
        objects.push_back(AnswerFields(element));
    return objects;
}

} // namespace anadrome
