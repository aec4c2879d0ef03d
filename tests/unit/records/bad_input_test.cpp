#include <algorithm>
#include <functional>
#include <gmock/gmock.h>
#include <string>
#include <string_view>
#include <vector>

#include "base/json.h"
#include "support/formats.h"

// Every kind of document is put to the same trials. What is wrong is refused as a whole; nothing
// ever crashes.
namespace varnhold::testing {
namespace {

using json::Value;

class BadInput : public ::testing::TestWithParam<Format> {
protected:
    [[nodiscard]] const Format& format() const { return GetParam(); }
    [[nodiscard]] bool accepts(std::string_view text) const {
        return format().recode(text).has_value();
    }
    [[nodiscard]] bool isOptional(const std::string& key) const {
        const auto& keys = format().optionalKeys;
        return std::find(keys.begin(), keys.end(), key) != keys.end();
    }
};

// Only this reader looks for two texts and takes everything else as it comes.
bool isLenient(const Format& format) {
    return format.kind == std::string("preferred-provider");
}

// Calls `visit` for each object in the document, the innermost first.
void eachObject(Value& value, const std::function<void(Value&)>& visit) {
    if (value.is_structured()) {
        for (Value& member : value) {
            eachObject(member, visit);
        }
    }
    if (value.is_object()) {
        visit(value);
    }
}

// The document once for each member of each object in it, with that member changed.
struct Variant {
    std::string key;
    std::string text;
};

std::vector<Variant>
variants(const std::string& sample,
         const std::function<bool(Value& object, const std::string& key)>& change) {
    std::vector<Variant> out;
    const Value original = *json::parse(sample);
    for (std::size_t target = 0;; ++target) {
        Value document = original;
        std::size_t index = 0;
        std::string key;
        bool changed = false;
        eachObject(document, [&](Value& object) {
            std::vector<std::string> keys;
            for (const auto& [name, member] : object.items()) {
                keys.push_back(name);
            }
            for (const std::string& name : keys) {
                if (index++ == target) {
                    key = name;
                    changed = change(object, name);
                }
            }
        });
        if (target >= index) {
            return out;
        }
        if (changed) {
            out.push_back({key, json::compact(document)});
        }
    }
}

TEST_P(BadInput, TakesItsSampleAndWritesItBackAsItWas) {
    EXPECT_EQ(format().recode(format().sample).has_value(), true);
    if (!isLenient(format())) {
        EXPECT_EQ(*json::parse(*format().recode(format().sample)), *json::parse(format().sample));
    }
}

TEST_P(BadInput, RefusesNothingAndBlanks) {
    EXPECT_FALSE(accepts(""));
    EXPECT_FALSE(accepts(" \r\n\t"));
    EXPECT_FALSE(accepts("\xEF\xBB\xBF"));
}

TEST_P(BadInput, RefusesADocumentCutAtAnyByte) {
    for (std::size_t length = 0; length < format().sample.size(); ++length) {
        EXPECT_FALSE(accepts(format().sample.substr(0, length))) << length;
    }
}

TEST_P(BadInput, RefusesAnythingAfterTheDocument) {
    for (const char* rest : {"x", ",", "]", "}", "[]", "\"\"", "//", "0"}) {
        EXPECT_FALSE(accepts(format().sample + rest)) << rest;
    }
    EXPECT_FALSE(accepts(format().sample + std::string(1, '\0')));
    EXPECT_TRUE(accepts(format().sample + " \t\r\n"));
}

TEST_P(BadInput, TakesAByteOrderMarkBeforeTheDocument) {
    EXPECT_EQ(format().recode("\xEF\xBB\xBF" + format().sample), format().recode(format().sample));
}

TEST_P(BadInput, RefusesInvalidUtf8Anywhere) {
    for (std::size_t at = 0; at < format().sample.size(); ++at) {
        std::string text = format().sample;
        text[at] = '\xFF';
        EXPECT_FALSE(accepts(text)) << at;
    }
}

TEST_P(BadInput, SurvivesAnyOneByteBeingAnother) {
    for (std::size_t at = 0; at < format().sample.size(); ++at) {
        for (const char byte :
             {'\0', '"', '{', '}', '[', ']', ',', ':', '\\', '-', '9', 'n', '\x80'}) {
            std::string text = format().sample;
            text[at] = byte;
            if (const auto accepted = format().recode(text)) {
                EXPECT_EQ(format().recode(*accepted), *accepted) << text;
            }
        }
    }
}

TEST_P(BadInput, RefusesAnotherTypeAtTheTop) {
    const Value sample = *json::parse(format().sample);
    for (const char* text :
         {"null", "true", "0", "1.5", "\"text\"", "[]", "{}", "[null]", "[[]]"}) {
        if (json::parse(text)->type() != sample.type()) {
            EXPECT_FALSE(accepts(text)) << text;
        }
    }
    EXPECT_FALSE(accepts("[" + format().sample + "]"));
}

TEST_P(BadInput, RefusesDeepNestingWithoutExhaustingTheStack) {
    EXPECT_FALSE(accepts(std::string(1000000, '[')));
    std::string objects;
    for (int i = 0; i < 100000; ++i) {
        objects += R"({"a":)";
    }
    EXPECT_FALSE(accepts(objects));
}

TEST_P(BadInput, RefusesAMemberOfAnotherType) {
    if (isLenient(format())) {
        return;
    }
    for (const char* text : {"true", "5", "\"text\"", "[]", "[1]", "{}", "{\"a\":1}"}) {
        const Value other = *json::parse(text);
        const auto changed = variants(format().sample, [&](Value& object, const std::string& key) {
            const bool differs = object[key].is_number() != other.is_number() ||
                                 (!other.is_number() && object[key].type() != other.type());
            object[key] = other;
            return differs;
        });
        for (const Variant& variant : changed) {
            EXPECT_FALSE(accepts(variant.text)) << variant.text;
        }
    }
}

TEST_P(BadInput, TakesNullForAnOptionalMemberOnly) {
    if (isLenient(format())) {
        return;
    }
    for (const Variant& variant :
         variants(format().sample, [](Value&object, const std::string&key) {
             object[key] = nullptr;
             return true;
         })) {
        EXPECT_EQ(accepts(variant.text), isOptional(variant.key)) << variant.text;
    }
}

TEST_P(BadInput, MissesAnOptionalMemberOnly) {
    // Without a chain's key the rest of the assignments is still a whole document.
    if (isLenient(format()) || format().kind == std::string("assignments")) {
        return;
    }
    for (const Variant& variant :
         variants(format().sample, [](Value&object, const std::string&key) {
             object.erase(key);
             return true;
         })) {
        EXPECT_EQ(accepts(variant.text), isOptional(variant.key)) << variant.text;
    }
}

TEST_P(BadInput, IgnoresKeysThatItDoesNotKnow) {
    if (format().kind == std::string("assignments")) {
        return; // every key is a chain's there
    }
    Value document = *json::parse(format().sample);
    eachObject(document, [](Value& object) {
        object["surprise"] = {{"deep", {1, 2.5, nullptr, "text", true}}};
        object[""] = nullptr;
    });
    EXPECT_EQ(format().recode(json::compact(document)), format().recode(format().sample));
}

TEST_P(BadInput, LetsTheLastOfTwoEqualKeysCount) {
    if (format().sample.front() != '{' || isLenient(format())) {
        return;
    }
    const Value document = *json::parse(format().sample);
    const std::string key = document.items().begin().key();
    const std::string twice = "{\"" + key + "\":null," + format().sample.substr(1);
    EXPECT_EQ(format().recode(twice), format().recode(format().sample));
}

TEST_P(BadInput, RefusesNullAndOtherTypesAsElements) {
    for (const char* element : {"null", "5", "true", "[]"}) {
        std::string text = format().sample;
        const std::size_t bracket = text.find('[');
        if (bracket == std::string::npos) {
            return;
        }
        text.insert(bracket + 1, std::string(element) + ",");
        EXPECT_FALSE(accepts(text)) << text;
    }
}

TEST_P(BadInput, RefusesTextThatOnlyResemblesJson) {
    if (format().sample.front() == '"') {
        return;
    }
    const auto inserted = [&](const std::string& text) {
        std::string document = format().sample;
        document.insert(document.rfind(document.front() == '[' ? ']' : '}'), text);
        return document;
    };
    for (const char* text : {",", ",,", "/**/", "'", "NaN", "\\"}) {
        EXPECT_FALSE(accepts(inserted(text))) << text;
    }
}

INSTANTIATE_TEST_SUITE_P(Formats, BadInput, ::testing::ValuesIn(formats()),
                         [](const auto& each) { return testName(each.param); });

} // namespace
} // namespace varnhold::testing
