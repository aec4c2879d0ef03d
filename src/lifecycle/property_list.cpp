#include "lifecycle/property_list.h"

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <plist/plist.h>

#include "base/unicode.h"
#include "lifecycle/property_list_check.h"

namespace varnhold {

namespace {

struct NodeDeleter {
    void operator()(void* node) const { plist_free(node); }
};
// plist_t is a bare void pointer; a dictionary owns all that was put into it.
using Node = std::unique_ptr<void, NodeDeleter>;
using CharBuffer = std::unique_ptr<char, decltype(&std::free)>;

bool canStandInXml(std::string_view text) {
    const bool control = std::any_of(text.begin(), text.end(), [](char c) {
        return static_cast<unsigned char>(c) < 0x20 && c != '\t' && c != '\n' && c != '\r';
    });
    return !control && unicode::isValidUtf8(text) &&
           text.find("\xEF\xBF\xBE") == std::string_view::npos &&
           text.find("\xEF\xBF\xBF") == std::string_view::npos;
}

Result<void> checkTexts(const PropertyList& list) {
    const auto refuse = [](const std::string& what) {
        return failure(what + " holds a character that a property list can't carry");
    };
    for (const auto& [name, value] : list.environmentVariables) {
        if (!canStandInXml(name) || !canStandInXml(value)) {
            return refuse("environment variable " + name);
        }
    }
    for (const std::string& argument : list.programArguments) {
        if (!canStandInXml(argument)) {
            return refuse("a program argument");
        }
    }
    for (const std::string* text :
         {&list.label, &list.workingDirectory, &list.standardOutPath, &list.standardErrorPath}) {
        if (!canStandInXml(*text)) {
            return refuse("\"" + *text + "\"");
        }
    }
    return {};
}

// Readers on one line each, with the key in the reason.
class DictionaryReader {
public:
    explicit DictionaryReader(plist_t dictionary) : dictionary_(dictionary) {}

    [[nodiscard]] std::string string(const char* key) {
        const plist_t node = plist_dict_get_item(dictionary_, key);
        return node == nullptr ? std::string() : text(node, key);
    }

    [[nodiscard]] bool boolean(const char* key) {
        const plist_t node = find(key, PLIST_BOOLEAN);
        uint8_t value = 0;
        if (node != nullptr) {
            plist_get_bool_val(node, &value);
        }
        return value != 0;
    }

    [[nodiscard]] std::vector<std::string> strings(const char* key) {
        std::vector<std::string> out;
        if (const plist_t node = find(key, PLIST_ARRAY)) {
            for (uint32_t i = 0; i < plist_array_get_size(node); ++i) {
                out.push_back(text(plist_array_get_item(node, i), key));
            }
        }
        return out;
    }

    [[nodiscard]] std::map<std::string, std::string> stringMap(const char* key) {
        std::map<std::string, std::string> out;
        const plist_t node = find(key, PLIST_DICT);
        if (node == nullptr) {
            return out;
        }
        plist_dict_iter raw = nullptr;
        plist_dict_new_iter(node, &raw);
        const CharBuffer iterator(static_cast<char*>(raw), &std::free);
        while (true) {
            char* name = nullptr;
            plist_t member = nullptr;
            plist_dict_next_item(node, raw, &name, &member);
            const CharBuffer owner(name, &std::free);
            if (member == nullptr) {
                return out;
            }
            out.emplace(name, text(member, key));
        }
    }

    [[nodiscard]] const std::string& error() const { return error_; }

private:
    [[nodiscard]] plist_t find(const char* key, plist_type type) {
        const plist_t node = plist_dict_get_item(dictionary_, key);
        if (node != nullptr && plist_get_node_type(node) != type) {
            error_ = std::string(key) + " has a wrong type";
            return nullptr;
        }
        return node;
    }

    [[nodiscard]] std::string text(plist_t node, const char* key) {
        uint64_t length = 0;
        const char* value = plist_get_node_type(node) == PLIST_STRING
                                ? plist_get_string_ptr(node, &length)
                                : nullptr;
        if (value == nullptr) {
            error_ = std::string(key) + " has a wrong type";
            return {};
        }
        return {value, length};
    }

    plist_t dictionary_;
    std::string error_;
};

} // namespace

Result<std::string> encodePropertyList(const PropertyList& list) {
    if (const Result<void> checked = checkTexts(list); !checked) {
        return failure(checked.error());
    }
    // libplist keeps the order of insertion; sorted keys are what the platform's own writer gives.
    const Node root(plist_new_dict());
    const plist_t variables = plist_new_dict();
    for (const auto& [name, value] : list.environmentVariables) {
        plist_dict_set_item(variables, name.c_str(), plist_new_string(value.c_str()));
    }
    plist_dict_set_item(root.get(), "EnvironmentVariables", variables);
    plist_dict_set_item(root.get(), "KeepAlive", plist_new_bool(list.keepAlive ? 1 : 0));
    plist_dict_set_item(root.get(), "Label", plist_new_string(list.label.c_str()));
    const plist_t arguments = plist_new_array();
    for (const std::string& argument : list.programArguments) {
        plist_array_append_item(arguments, plist_new_string(argument.c_str()));
    }
    plist_dict_set_item(root.get(), "ProgramArguments", arguments);
    plist_dict_set_item(root.get(), "RunAtLoad", plist_new_bool(list.runAtLoad ? 1 : 0));
    plist_dict_set_item(root.get(), "StandardErrorPath",
                        plist_new_string(list.standardErrorPath.c_str()));
    plist_dict_set_item(root.get(), "StandardOutPath",
                        plist_new_string(list.standardOutPath.c_str()));
    plist_dict_set_item(root.get(), "WorkingDirectory",
                        plist_new_string(list.workingDirectory.c_str()));
    char* xml = nullptr;
    uint32_t length = 0;
    plist_to_xml(root.get(), &xml, &length);
    const CharBuffer owner(xml, &std::free);
    if (xml == nullptr) {
        return failure("the property list can't be written as XML");
    }
    return std::string(xml, length);
}

Result<PropertyList> decodePropertyList(std::string_view content) {
    if (const auto checked = checkPropertyList(content); !checked) {
        return failure(checked.error());
    }
    plist_t parsed = nullptr;
    plist_from_memory(content.data(), static_cast<uint32_t>(content.size()), &parsed);
    const Node root(parsed);
    if (!root || plist_get_node_type(root.get()) != PLIST_DICT) {
        return failure("not a property list with a dictionary at its root");
    }
    DictionaryReader in(root.get());
    PropertyList list{.label = in.string("Label"),
                      .keepAlive = in.boolean("KeepAlive"),
                      .runAtLoad = in.boolean("RunAtLoad"),
                      .environmentVariables = in.stringMap("EnvironmentVariables"),
                      .programArguments = in.strings("ProgramArguments"),
                      .workingDirectory = in.string("WorkingDirectory"),
                      .standardOutPath = in.string("StandardOutPath"),
                      .standardErrorPath = in.string("StandardErrorPath")};
    if (!in.error().empty()) {
        return failure(in.error());
    }
    if (list.label.empty()) {
        return failure("Label is missing or empty");
    }
    if (list.programArguments.empty() || list.programArguments.front().empty()) {
        return failure("ProgramArguments is missing or empty");
    }
    return list;
}

} // namespace varnhold
