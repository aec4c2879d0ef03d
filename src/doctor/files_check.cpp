#include "doctor/files_check.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/files.h"
#include "doctor/catalogue.h"
#include "doctor/file_state.h"
#include "doctor/json_place.h"
#include "doctor/property_list_check.h"
#include "doctor/settings_files.h"
#include "doctor/words.h"

namespace varnhold::doctor {

namespace {

constexpr std::uint64_t blockSize = 4096; // of common file systems; a file takes whole ones

std::string inCapital(std::string text) {
    if (!text.empty() && text.front() >= 'a' && text.front() <= 'z') {
        text.front() = static_cast<char>(text.front() - 'a' + 'A');
    }
    return text;
}

// Looks at one file after the other.
class FilesCheck {
public:
    explicit FilesCheck(const Surroundings& around) : around_(around) {}

    [[nodiscard]] Section section() && {
        if (!files::exists(around_.constants.appSupportDir)) {
            lacksFolder();
            return std::move(section_);
        }
        for (const SettingsFile& file : settingsFiles()) {
            look(file);
        }
        gatherMissing();
        compareBackup();
        checkPermissions();
        checkRoom();
        section_.table.headings = {"File", "Holds", "Size", "Changed"};
        section_.summary =
            std::to_string(read_) + " of " + counted(there_, "file", "files") + " can be read";
        section_.data["files"] = std::move(rows_);
        return std::move(section_);
    }

private:
    void lacksFolder() {
        section_.summary = "no settings yet";
        section_.data["files"] = json::Value::array();
        add({.id = ids::fileMissing,
             .level = Level::warning,
             .subject = "data folder",
             .sentence = "There is no folder " + around_.constants.appSupportDir + ".",
             .consequence = "Nothing has been set up: the fleet is empty.",
             .remedy = "Start Varnhold once and add a bot, or give the right folder with --data."});
    }

    void look(const SettingsFile& file) {
        const std::string path = pathOf(file, around_.constants);
        FileState state = fileStateOf(path);
        json::Value row{{"file", fileName(path)}, {"path", path}};
        std::string holds;
        const std::size_t before = section_.findings.size();
        if (state.kind == FileState::Kind::missing) {
            missing(file, path);
            holds = "not there";
        } else {
            ++there_;
            holds = state.kind == FileState::Kind::read ? readable(file, path, state)
                                                        : unreadable(file, path, state);
            checkWritable(file, path, state);
        }
        show(std::move(row), state, holds, before);
    }

    // A file that needn't be there and isn't has no row.
    void show(json::Value row, const FileState& state, const std::string& holds,
              std::size_t before) {
        std::optional<Level> level;
        for (std::size_t i = before; i < section_.findings.size(); ++i) {
            level = std::max(level, std::optional(section_.findings[i].level));
        }
        const bool isThere = state.kind != FileState::Kind::missing;
        row["present"] = isThere;
        row["readable"] = state.kind == FileState::Kind::read && holds != rejected;
        row["holds"] = isThere ? holds : "";
        rows_.push_back(row);
        if (!isThere && !level) {
            return;
        }
        // Of what stands in a file's place they would tell nothing.
        const bool isFile =
            state.kind == FileState::Kind::read || state.kind == FileState::Kind::tooLarge;
        section_.table.rows.push_back({level,
                                       !level,
                                       {row["file"], holds, isFile ? sizeInWords(state.size) : "",
                                        isFile ? dayOf(state.changed) : ""}});
    }

    void missing(const SettingsFile& file, const std::string& path) {
        if (file.whenMissing.empty()) {
            return;
        }
        if (file.levelWhenMissing == Level::note) { // told in one for all of them
            missing_.push_back(fileName(path));
            return;
        }
        add({.id = ids::fileMissing,
             .level = file.levelWhenMissing,
             .subject = fileName(path),
             .sentence = "The file isn't there.",
             .consequence = std::string(file.whenMissing),
             .place = Place{path}});
    }

    void gatherMissing() {
        if (!missing_.empty()) {
            add({.id = ids::fileMissing,
                 .level = Level::note,
                 .subject = counted(missing_.size(), "file", "files"),
                 .sentence = "Not there: " + enumerated(missing_) + ".",
                 .consequence = "Chains and lists read as empty and preferences as their defaults, "
                                "until the settings window is first opened."});
        }
    }

    std::string unreadable(const SettingsFile& file, const std::string& path,
                           const FileState& state) {
        Finding finding{.id = ids::fileUnreadable,
                        .level = Level::fault,
                        .subject = fileName(path),
                        .sentence = "The file can't be read: " + state.what + ".",
                        .consequence = std::string(file.whenRejected),
                        .remedy = "Make it yours to read.",
                        .command = "chmod u+rw " + shellQuoted(path),
                        .place = Place{path}};
        if (state.kind == FileState::Kind::danglingLink) {
            finding.sentence = "The file is a link to something that isn't there.";
            finding.remedy = "Put the link's target back, or remove the link.";
            finding.command.clear();
        } else if (state.kind == FileState::Kind::notRegular) {
            finding.id = ids::fileNotRegular;
            finding.sentence = "In the file's place stands " + state.what + ".";
            finding.remedy = "Move it away, and put a plain file there.";
            finding.command.clear();
        } else if (state.kind == FileState::Kind::tooLarge) {
            finding.id = ids::fileTooLarge;
            finding.sentence =
                "The file has " + sizeInWords(state.size) + ", and beyond 64 MiB nothing is read.";
            finding.remedy = "Move it away, and start with a copy that is smaller.";
            finding.command.clear();
        }
        add(std::move(finding));
        return "can't be read";
    }

    std::string readable(const SettingsFile& file, const std::string& path,
                         const FileState& state) {
        json::Value document;
        if (file.isJson) {
            Result<json::Value> parsed = json::parse(state.content);
            if (!parsed) {
                const auto fault = syntaxFault(state.content);
                reject(file, path, fault ? *fault : Fault{{}, "not JSON"}, "Not JSON: ");
                return rejected;
            }
            document = *std::move(parsed);
        }
        const Result<Reading> reading = file.read(document, state.content);
        if (!reading) {
            const Fault fault = file.isJson
                                    ? decodingFault(state.content, document, reading.error())
                                    : Fault{{}, reading.error()};
            reject(file, path, fault, "");
            return rejected;
        }
        ++read_;
        for (const PartlyRead& each : reading->partly) {
            partly(path, decodingFault(state.content, document, each.reason), each.consequence);
        }
        checkKeys(path, state.content, document, reading->rewritten);
        return reading->summary;
    }

    void reject(const SettingsFile& file, const std::string& path, Fault fault,
                const std::string& begin) {
        fault.place.file = path;
        add({.id = ids::fileRejected,
             .level = Level::fault,
             .subject = fileName(path),
             .sentence = inCapital(begin + fault.what) + ".",
             .consequence = std::string(file.whenRejected),
             .remedy = file.isSaved
                           ? "Mend it before the settings window is opened, or put a copy back."
                           : "Mend it, or remove it.",
             .place = fault.place});
    }

    void partly(const std::string& path, Fault fault, const std::string& consequence) {
        fault.place.file = path;
        add({.id = ids::filePartlyRead,
             .level = Level::warning,
             .subject = fileName(path),
             .sentence = inCapital(fault.what) + ".",
             .consequence = consequence,
             .remedy = "Put a right value there.",
             .place = fault.place});
    }

    void checkKeys(const std::string& path, const std::string& text, const json::Value& document,
                   const std::string& rewritten) {
        const Result<json::Value> kept = json::parse(rewritten);
        if (rewritten.empty() || !kept) {
            return;
        }
        const std::vector<std::string> dropped = droppedKeys(document, *kept);
        if (dropped.empty()) {
            return;
        }
        std::vector<std::string> names;
        for (const std::string& way : dropped) {
            const std::string field = decodingFault(text, document, way).place.field;
            if (std::find(names.begin(), names.end(), field) == names.end()) {
                names.push_back(field);
            }
        }
        Place place = decodingFault(text, document, dropped.front()).place;
        place.file = path;
        const bool areTokens = names == std::vector<std::string>{"oauthTokens"};
        add({.id = ids::fileDropsKeys,
             .level = Level::warning,
             .subject = fileName(path),
             .sentence = "Holds " + counted(dropped.size(), "key", "keys") +
                         " that a save leaves out: " + listed(names) + ".",
             .consequence = areTokens
                                ? "Agents get these tokens at their start, until the next save."
                                : "Nothing reads them, and the next save drops them.",
             .remedy = "Keep a copy of what you need elsewhere.",
             .place = place});
    }

    static std::string listed(const std::vector<std::string>& names) {
        constexpr std::size_t most = 5;
        std::string out;
        for (std::size_t i = 0; i < std::min(names.size(), most); ++i) {
            out += (i == 0 ? "" : ", ") + names[i];
        }
        return names.size() > most ? out + " and " + std::to_string(names.size() - most) + " more"
                                   : out;
    }

    void checkWritable(const SettingsFile& file, const std::string& path, const FileState& state) {
        if (file.isSaved && state.kind == FileState::Kind::read && !state.writable) {
            add({.id = ids::fileNotWritable,
                 .level = Level::warning,
                 .subject = fileName(path),
                 .sentence = "The file can't be written.",
                 .consequence = "What is changed in the settings window is lost with the window.",
                 .remedy = "Make it yours to write.",
                 .command = "chmod u+w " + shellQuoted(path),
                 .place = Place{path}});
        }
        if (file.isSaved) {
            needed_ += (state.size / blockSize + 1) * blockSize;
        }
    }

    void compareBackup() {
        const std::string path = around_.constants.customGroupsFile;
        const FileState main = fileStateOf(path);
        const FileState backup = fileStateOf(path + ".bak");
        if (main.kind != FileState::Kind::read || backup.kind != FileState::Kind::read ||
            backup.changed >= main.changed || backup.content == main.content) {
            return;
        }
        add({.id = ids::fileBackupOlder,
             .level = Level::note,
             .subject = fileName(path) + ".bak",
             .sentence = "The backup is of " + dayOf(backup.changed) + ", the file of " +
                         dayOf(main.changed) + ", and they differ.",
             .consequence = "Backups are made once and never refreshed: should the file be lost, "
                            "the groups of that day come back.",
             .remedy = "Copy the file over its backup while all is well.",
             .place = Place{path + ".bak"}});
    }

    void checkPermissions() {
        for (const std::string& path :
             {around_.constants.authConfigFile, around_.constants.botsConfigFile}) {
            const FileState state = fileStateOf(path);
            const bool holdsSecrets =
                state.kind == FileState::Kind::read && holdsSecret(state.content);
            if (holdsSecrets && othersCanRead(path)) {
                add({.id = ids::fileReadableByOthers,
                     .level = Level::warning,
                     .subject = fileName(path),
                     .sentence = "Every user of this machine can read the keys or tokens in it.",
                     .consequence = "Varnhold keeps the permissions that a file has.",
                     .remedy = "Keep it to yourself.",
                     .command = "chmod 600 " + shellQuoted(path),
                     .place = Place{path}});
            }
        }
    }

    // Of a file that can't be parsed one has to believe that it holds some.
    static bool holdsSecret(const std::string& content) {
        const Result<json::Value> document = json::parse(content);
        if (!document) {
            return !content.empty();
        }
        const auto isFilled = [](const json::Value& object) {
            return std::any_of(object.items().begin(), object.items().end(), [](const auto& each) {
                const std::string& key = each.key();
                return (key == "token" || key == "oauthTokens" || key.ends_with("Key")) &&
                       !each.value().empty() && each.value() != "";
            });
        };
        if (document->is_array()) {
            return std::any_of(document->begin(), document->end(), [&](const json::Value& each) {
                return each.is_object() && isFilled(each);
            });
        }
        return document->is_object() && isFilled(*document);
    }

    void checkRoom() {
        const auto room = around_.diskRoom(around_.constants.appSupportDir);
        if (!room) {
            return;
        }
        const std::uint64_t left = std::min(room->freeBytes, room->quotaLeft.value_or(UINT64_MAX));
        section_.data["bytesFree"] = left;
        section_.data["bytesOfASave"] = needed_;
        if (left >= needed_ && !room->outOfNames) {
            return;
        }
        const bool isQuota = room->quotaLeft && *room->quotaLeft < room->freeBytes;
        add({.id = ids::diskNearlyFull,
             .level = Level::fault,
             .subject = isQuota ? "quota" : "disk",
             .sentence = room->outOfNames && left >= needed_
                             ? "The disk can't take one more file."
                             : "There is room for " + sizeInWords(left) + ", and a save needs " +
                                   sizeInWords(needed_) + ".",
             .consequence = "Files that can't be written keep their old content; nobody is told.",
             .remedy = "Make room before you change settings."});
    }

    void add(Finding finding) { section_.findings.push_back(std::move(finding)); }

    static constexpr const char* rejected = "can't be used";

    const Surroundings& around_;
    Section section_{.check = "files", .summary = {}};
    json::Value rows_ = json::Value::array();
    std::vector<std::string> missing_;
    std::size_t there_ = 0;
    std::size_t read_ = 0;
    std::uint64_t needed_ = 0;
};

} // namespace

Section checkFiles(const Surroundings& surroundings) {
    return FilesCheck(surroundings).section();
}

} // namespace varnhold::doctor
