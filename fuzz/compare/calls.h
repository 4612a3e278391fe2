// One call of an operation, drawn once and made of either plug-in, and what came of it.
#ifndef BGP_FUZZ_COMPARE_CALLS_H
#define BGP_FUZZ_COMPARE_CALLS_H

#include "bgp_standalone_host.hpp"
#include "fuzz/compare/draw.h"

#include <functional>
#include <string>
#include <vector>

namespace bgp::compare {

namespace host = bgp::standalone;

// A line for each thing that can be seen of an answer: code, out-parameters, bytes, texts, tables, memory.
using Answer = std::vector<std::string>;

// One making of a call. The caller resets the handle behind it.
struct Trial {
    const PlugIn &plugIn;
    size_t side;
    uint32_t handle;
    host::Faults faults = {};     // what the host fails in
    host::Counters counters = {}; // what was asked of the host
    uint32_t code = 0;
    Answer answer = {};
};

struct Call {
    std::string given; // the input, for people
    std::function<void(Trial &)> make;
};

// An operation of the subjects, or a function beside them.
struct Operation {
    const char *name;
    size_t share; // how often it is called, against the others
    bool (*offered)(const Subject &subject, size_t side);
    Call (*draw)(Draw &draw, const Subject &subject);
};

extern const std::vector<Operation> kOperations;

// A function that both plug-ins export beside the operations, to be called by its row.
struct Helper {
    const char *name;
    const char *arguments;
    const char *like; // the subject whose texts and values it takes
};

extern const std::vector<Helper> kHelpers;
Call DrawHelper(Draw &draw, const Helper &helper, const Subject &like);
// The subject that the helper takes after, with texts that the old plug-in's helper itself accepts: pieces, mostly.
Subject LearnHelper(const Material &material, const PlugIn &old, const Helper &helper, const Subject &like);

// The operations over Lua tables.
Call DrawLuaSet(Draw &draw, const Subject &subject);
Call DrawLuaGet(Draw &draw, const Subject &subject);
Call DrawReader(Draw &draw, const Subject &subject);

// -------------------------------------------------------------------------------------------- what their sources share

// Makes the call under the trial's faults. Notes its code and what became of the host's memory.
void Watch(Trial &trial, const std::function<uint32_t()> &call);
// Gives a result back, when it is the host's.
void GiveBack(void *result);

// What a caller lends: the content, and marked bytes behind it, so that every byte written can be told.
inline constexpr uint8_t kMark = 0xA5;
Bytes LentText(const std::string &text); // with its terminator
Bytes LentBytes(const Bytes &content, size_t room = kRoom);
// Notes a line when what was lent for reading is no longer what it was.
void NoteKept(Trial &trial, const char *name, const Bytes &lent, const Bytes &now);
// Notes what was written: up to the last byte that changed, "nothing" when none did.
void NoteWritten(Trial &trial, const char *name, const Bytes &lent, const Bytes &now, bool asText = false);
void Note(Trial &trial, const char *name, const std::string &what);

std::string Hex(const uint8_t *bytes, size_t size);
std::string Hex(uint32_t number); // "0x801701"
// In quotes, what is not printable as \xNN.
std::string Quoted(const uint8_t *bytes, size_t size);
std::string Quoted(const std::string &text);

// The pointer, or null where it is the one that is missing.
template <class Type>
Type *Unless(Type *pointer, size_t missing, size_t place)
{
    return missing == place ? nullptr : pointer;
}

// Words of an input.
std::string GivenMode(uint8_t mode);
std::string GivenLength(uint32_t length);
std::string GivenValue(const Bytes &value);
std::string GivenMissing(size_t missing);
std::string GivenTypeId(uint16_t typeId);

// Builds field "v" of a fresh table as the old plug-in stores the value, spoilt by the edits. Gives the stack, the
// table on top.
lua_State *BuildTable(const Subject &subject, Bytes value, const Bytes &edits);

} // namespace bgp::compare

#endif
