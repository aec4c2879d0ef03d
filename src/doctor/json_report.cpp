#include "doctor/json_report.h"

#include <optional>

#include "base/json.h"

namespace varnhold::doctor {

namespace {

constexpr int format = 1;
constexpr int indentation = 2;

json::Value levelOf(std::optional<Level> level) {
    return level ? std::string(name(*level)) : "ok";
}

json::Value valueOf(const Place& place) {
    json::Value out = json::Value::object();
    out["file"] = place.file;
    if (place.line) {
        out["line"] = *place.line;
        out["column"] = place.column.value_or(1);
    }
    if (place.record) {
        out["record"] = *place.record;
    }
    if (!place.field.empty()) {
        out["field"] = place.field;
    }
    return out;
}

json::Value valueOf(const Finding& finding, const Secrets& secrets) {
    json::Value out = json::Value::object();
    out["id"] = finding.id;
    out["level"] = name(finding.level);
    out["subject"] = finding.subject;
    out["sentence"] = finding.sentence;
    const auto set = [&out](const char* key, const std::string& text) {
        if (!text.empty()) {
            out[key] = text;
        }
    };
    set("consequence", finding.consequence);
    set("remedy", finding.remedy);
    set("command", finding.command);
    if (finding.place) {
        out["place"] = valueOf(*finding.place);
    }
    for (const std::string& line : finding.lines) {
        out["lines"].push_back(secrets.maskLogLine(line));
    }
    out["page"] = "doctor.md#" + std::string(finding.id);
    return out;
}

} // namespace

std::string jsonReport(const Report& report, const Secrets& secrets) {
    json::Value out = json::Value::object();
    out["format"] = format;
    out["made"] = report.made;
    out["data"] = report.data;
    out["level"] = levelOf(worst(report));
    out["checks"] = json::Value::array();
    for (const Section& section : report.sections) {
        json::Value check = json::Value::object();
        check["check"] = section.check;
        check["level"] = levelOf(worst(section));
        check["summary"] = section.summary;
        for (const auto& [key, value] : section.data.items()) {
            check[key] = value;
        }
        check["findings"] = json::Value::array();
        for (const Finding& finding : section.findings) {
            check["findings"].push_back(valueOf(finding, secrets));
        }
        out["checks"].push_back(std::move(check));
    }
    return secrets.mask(out).dump(indentation, ' ', false, json::Value::error_handler_t::replace) +
           "\n";
}

} // namespace varnhold::doctor
