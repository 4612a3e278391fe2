// Records as lines of output: which fields, in which format.
#ifndef BGPDT_OUTPUT_H
#define BGPDT_OUTPUT_H

#include "record.h"
#include "sink.h"

#include <array>
#include <string>
#include <vector>

namespace bgpdt {

struct Field;

struct Column {
    const Field *field;
    std::array<char, 16> key; // with what stands around it in JSON: ,"name":
    size_t keyLength;
};

// What is written of each record.
struct Output {
    void (*write)(const Output &output, const Record &record, Sink &sink) = nullptr; // null: nothing
    std::vector<Column> columns;
};

// The names that there are.
std::vector<std::string> FormatNames();
std::vector<std::string> FieldNames();

// Both names are known ones; no fields stands for those that the format usually has.
Output MakeOutput(const std::string &format, const std::vector<std::string> &fields);

} // namespace bgpdt

#endif
