// One line on its way through the converter: what was read, what the plug-in made of it, or why it was refused.
#ifndef BGPDT_RECORD_H
#define BGPDT_RECORD_H

#include "explain/refusal.h"
#include "lines.h"
#include "values.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace bgpdt {

struct Record {
    uint64_t line = 0;
    size_t column = 1; // of the line, at which the text begins
    std::string_view type;
    std::string_view text;
    uint32_t code = DT_OK;
    std::string error;    // why it was refused, empty when it was not: the code's name, or words
    explain::Refusal why; // by the plug-in, where it tells
    std::string kind;     // of a composite type
    std::string_view value;
    bool prints = false; // the type has a FormatOut and it succeeded
    std::string_view printed;

    bool Accepted() const { return error.empty(); }
};

// A type that was found.
struct KnownType : Subject {
    explicit KnownType(const DataTypeDescriptor &descriptor);
    bool hasKinds; // its values are of several kinds
};

// How lines are read.
struct Reading {
    std::string typeName;          // of every line; empty: a line is "TYPE<tab>TEXT"
    std::optional<KnownType> type; // of that name
    int mode = -1;                 // -1: the type's typing mode
};

// Makes records of lines, one at a time and in memory of its own.
class Converter {
public:
    // The record refers to the line and to how it is read, and stays until the next call.
    const Record &Convert(const Line &line, const Reading &reading);

private:
    void Begin(uint64_t line);
    void Split(std::string_view line, const Reading &reading);
    void Refuse(uint32_t code, std::string_view error);
    const KnownType *Find(std::string_view name);
    void ConvertText(const KnownType &type, const Line &line, int mode);

    uint64_t converted_ = 0;
    Results results_;
    Record record_;
    std::string text_ = std::string(kLongestLine + 1, '\0'); // a copy for the operation, with its terminator
    std::string foundName_;                                  // of the type that was found last
    std::optional<KnownType> found_;
};

// "FILE:LINE:COLUMN: TYPE "TEXT" refused: ..." with a line end; without a column where the type tells no place.
std::string Report(const Record &record, const std::string &file);

} // namespace bgpdt

#endif
