#include "fuzz/compare/material.h"

#include "bgp_host_services.h"
#include "bgp_standalone_host.hpp"
#include "fuzz/text_changes.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <set>

namespace bgp::compare {
namespace {

namespace files = std::filesystem;
namespace host = bgp::standalone;

constexpr uint8_t kUsualModes[] = {1, 2};

std::string Read(const files::path &file)
{
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

// By name, so that every run has them in the same order.
std::vector<files::path> FilesIn(const files::path &folder)
{
    std::vector<files::path> found;
    if (files::exists(folder)) {
        for (const auto &entry : files::directory_iterator(folder)) {
            found.push_back(entry.path());
        }
    }
    std::sort(found.begin(), found.end());
    return found;
}

// ------------------------------------------------------------------------------------------------------------- sources

// Lines that are no comment, at most so many of a file, spread over it.
void AddLines(std::set<std::string> &texts, const files::path &folder)
{
    constexpr size_t kMost = 100;
    for (const files::path &path : FilesIn(folder)) {
        std::ifstream file(path);
        std::vector<std::string> lines;
        for (std::string line; std::getline(file, line);) {
            if (!line.starts_with('#')) {
                lines.push_back(line);
            }
        }
        for (size_t i = 0; i < std::min(kMost, lines.size()); ++i) {
            texts.insert(lines[i * lines.size() / std::min(kMost, lines.size())]);
        }
    }
}

// What stands between backquotes on a page: texts, values, much that is neither.
std::vector<std::string> QuotedOn(const files::path &path)
{
    std::vector<std::string> quoted;
    const std::string page = Read(path);
    for (size_t from = page.find('`'); from != std::string::npos;) {
        const size_t to = page.find('`', from + 1);
        if (to == std::string::npos) {
            break;
        }
        quoted.push_back(page.substr(from + 1, to - from - 1));
        from = page.find('`', to + 1);
    }
    return quoted;
}

// The texts of a fuzz target's inputs, which begin at that byte.
void AddSeeds(std::set<std::string> &texts, const files::path &folder, size_t textAt)
{
    for (const files::path &path : FilesIn(folder)) {
        const std::string seed = Read(path);
        if (seed.size() > textAt) {
            texts.insert(std::string(seed.c_str() + textAt));
        }
    }
}

void AddValue(Subject &subject, Bytes value)
{
    value.resize(std::max(value.size(), SizeOfValues(subject)));
    subject.values.push_back(value);
}

// The inputs of target "value" are named after their subject. There are values among them that cannot be typed.
void AddValueSeeds(std::vector<Subject> &subjects, const files::path &folder)
{
    constexpr size_t kValueAt = 3;
    for (const files::path &path : FilesIn(folder)) {
        const std::string file = path.filename();
        const std::string seed = Read(path);
        for (Subject &subject : subjects) {
            if (file.substr(0, file.rfind('-')) == subject.name && seed.size() > kValueAt) {
                AddValue(subject, {seed.begin() + kValueAt, seed.end()});
            }
        }
    }
}

// The bytes that a text of hexadecimal digits stands for; none when it is no such text.
Bytes HexBytes(const std::string &text)
{
    constexpr size_t kFewest = 8; // shorter ones are as likely numbers
    Bytes bytes;
    if (text.size() < kFewest || text.find_first_not_of("0123456789abcdef") != std::string::npos) {
        return bytes;
    }
    for (size_t at = 0; at + 1 < text.size(); at += 2) {
        bytes.push_back(static_cast<uint8_t>(std::stoi(text.substr(at, 2), nullptr, 16)));
    }
    return bytes;
}

// The texts of the reference pages, and the values of the types that a page is named after.
void AddPages(std::set<std::string> &texts, std::vector<Subject> &subjects, const files::path &folder)
{
    for (const files::path &path : FilesIn(folder)) {
        for (const std::string &quoted : QuotedOn(path)) {
            texts.insert(quoted);
            const Bytes value = HexBytes(quoted);
            for (Subject &subject : subjects) {
                if (!value.empty() && path.stem().string().find(subject.name) != std::string::npos) {
                    AddValue(subject, value);
                }
            }
        }
    }
}

// ------------------------------------------------------------------------------------------- what the old plug-in says

// The value of a text; empty when it is refused.
Bytes Typed(const DataTypeDescriptor &row, uint8_t mode, std::string text, uint32_t handle)
{
    const DataTypeRequest request{mode, handle};
    uint16_t typeId = 0, length = 0;
    void *value = nullptr;
    const uint32_t code = row.FormatIn(&request, row.TypeId, static_cast<uint32_t>(text.size() + 1), text.data(),
                                       &typeId, &length, &value);
    if (code != DT_OK || value == nullptr) {
        return {};
    }
    const auto *bytes = static_cast<const uint8_t *>(value);
    Bytes typed(bytes, bytes + length);
    SYS_DataTypeFree(value);
    return typed;
}

// The text of a value; empty when there is none.
std::string Printed(const DataTypeDescriptor &row, uint8_t mode, Bytes value, uint32_t handle)
{
    const DataTypeRequest request{mode, handle};
    std::vector<char> text(kTextRoom);
    uint16_t typeId = 0, length = 0;
    void *buffer = text.data();
    const auto size = static_cast<uint32_t>(value.size());
    value.resize(kRoom);
    const uint32_t code = row.FormatOut(&request, row.TypeId, size, value.data(), &typeId, &length, &buffer);
    host::ResetHandle(handle);
    return code == DT_OK && typeId == DT_TYPE_TEXT && buffer == text.data() ? std::string(text.data()) : "";
}

void LearnTexts(Subject &subject, const std::set<std::string> &texts, uint32_t handle)
{
    std::set<Bytes> values;
    for (const std::string &text : texts) {
        for (const uint8_t mode : kUsualModes) {
            const Bytes value = Typed(subject.rows[kOld], mode, text, handle);
            if (!value.empty()) {
                subject.texts.push_back(text);
                values.insert(value);
                break;
            }
        }
        host::ResetHandle(handle);
    }
    subject.values.insert(subject.values.end(), values.begin(), values.end());
}

// Printed texts are what people paste, whether they can be typed or not.
void LearnPrints(Subject &subject, uint32_t handle)
{
    std::set<std::string> printed;
    for (const Bytes &value : subject.values) {
        for (const uint8_t mode : kUsualModes) {
            printed.insert(Printed(subject.rows[kOld], mode, value, handle));
        }
    }
    subject.prints.assign(printed.begin(), printed.end());
}

} // namespace

size_t SizeOfValues(const Subject &subject)
{
    constexpr size_t kKey = 89; // route keys are as large whatever their rows register
    return std::max<size_t>(subject.rows[kOld].BinaryLength, subject.name.ends_with("PREFIX") ? kKey : 0);
}

bool PrintsItems(const Subject &subject)
{
    return subject.name == "ATTRIDBITMAP";
}

Material Gather(const std::string &project, std::vector<Subject> &subjects)
{
    const files::path folder(project);
    std::set<std::string> texts;
    AddLines(texts, folder / "examples" / "values");
    AddPages(texts, subjects, folder / "docs" / "reference");
    AddSeeds(texts, folder / "fuzz" / "corpus" / "text", 2);
    AddSeeds(texts, folder / "fuzz" / "corpus" / "faults", 4);
    AddValueSeeds(subjects, folder / "fuzz" / "corpus" / "value");
    const uint32_t handle = host::OpenHandle();
    for (Subject &subject : subjects) {
        if (subject.rows[kOld].FormatIn != nullptr) {
            LearnTexts(subject, texts, handle);
        }
        if (subject.rows[kOld].FormatOut != nullptr && !PrintsItems(subject)) {
            LearnPrints(subject, handle);
        }
    }
    host::CloseHandle(handle);
    return {subjects, {texts.begin(), texts.end()}, fuzz::DictionaryWords(folder / "fuzz" / "text.dict")};
}

} // namespace bgp::compare
