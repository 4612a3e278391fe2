// Calls of the functions that the plug-in exports beside the operations, by their rows.
#include "fuzz/compare/calls.h"

#include <lua.hpp>

#include <cstring>
#include <iterator>

namespace bgp::compare {

namespace {

// ---------------------------------------------------------------------------------------------------- groups of BGP-LS

uint32_t NoteGroup(uint32_t flag, char *value, void *noted, BgpLsParseContext *)
{
    *static_cast<std::string *>(noted) += std::to_string(flag) + ' ' + Quoted(value) + ' ';
    return value[0] == '9' ? 9 : 0; // a handler may refuse
}

constexpr BgpLsKeyword kKeywords[] = {{"NODE", 1, 1, NoteGroup},    {"LINK", 2, 1, NoteGroup},
                                      {"OSPF", 4, 0, NoteGroup},    {"ISIS", 8, 0, NoteGroup},
                                      {"as", 16, 0, NoteGroup},     {"identifier", 32, 0, NoteGroup},
                                      {"LOCAL", 64, 0, NoteGroup},  {"REMOTE", 128, 0, NoteGroup},
                                      {"mt-id", 256, 0, NoteGroup}, {"prefix", 512, 0, nullptr}};

// ----------------------------------------------------------------------------------------------------------- arguments

struct Argument {
    char kind;
    bool missing = false; // null
    std::string text = {};
    Bytes bytes = {}; // a value, a table's value, what fills memory
    Bytes edits = {}; // of the table
    uint32_t number = 0;
};

// Where an argument lies during a call.
struct Place {
    Bytes lent, memory;
    uint64_t number = 0;
    void *pointer = nullptr;
    std::string noted = {};
    lua_State *L = nullptr;
    int top = 0;
};

constexpr uint32_t kLimits[] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 10, 32, 128, 255, 256, 65535, 0xFFFFFFFF};
constexpr size_t kMostArguments = 7;
constexpr size_t kBehindFirstWord = 4;

uint32_t WordOf(const Bytes &value, size_t place)
{
    uint32_t word = 0;
    if (value.size() >= (place + 1) * sizeof word) {
        std::memcpy(&word, value.data() + place * sizeof word, sizeof word);
    }
    return word;
}

// Before the call: the text, the value and the table are the same for all arguments that take of them.
struct Drawn {
    std::string text;
    Bytes value, other, edits;
    size_t words = 0;  // of the value, taken so far
    size_t values = 0; // taken so far: the second one is the other
};

uint32_t DrawNumber(Draw &draw, char kind, Drawn &drawn)
{
    constexpr uint32_t kLongestText = 769;
    switch (kind) {
    case 'i':
        return static_cast<uint32_t>(Below(draw, 4));
    case 'l':
        return static_cast<uint32_t>(OneIn(draw, 4) ? Below(draw, kLongestText) + 1 : 256);
    case 'k':
        return static_cast<uint32_t>(OneIn(draw, 4) ? Below(draw, drawn.text.size() + 1) : drawn.text.size());
    case 'x':
        return static_cast<uint32_t>(Below(draw, 256));
    case 'W':
        return WordOf(drawn.value, drawn.words++);
    default:
        return Any(draw, kLimits);
    }
}

Argument DrawArgument(Draw &draw, char kind, Drawn &drawn)
{
    Argument argument{kind};
    switch (kind) {
    case 't':
    case 'c':
        argument.text = drawn.text;
        break;
    case 'V':
    case 'P':
    case 'E':
        argument.bytes = drawn.values++ == 0 ? drawn.value : drawn.other;
        break;
    case 'v':
        argument.bytes.assign(kRoom, OneIn(draw, 2) ? 0x00 : 0xEE);
        break;
    case 'L':
        argument.bytes = drawn.value;
        argument.edits = drawn.edits;
        break;
    case 'q':
        argument.number = DrawMode(draw);
        break;
    case 'o':
        argument.number = OneIn(draw, 2);
        break;
    default:
        argument.number = DrawNumber(draw, kind, drawn);
    }
    return argument;
}

std::string Given(const Argument &argument)
{
    if (argument.missing) {
        return "null";
    }
    switch (argument.kind) {
    case 't':
    case 'c':
        return Quoted(argument.text);
    case 'V':
    case 'P':
    case 'E':
    case 'L':
        return Hex(argument.bytes.data(), argument.bytes.size()) +
               (argument.edits.empty() ? "" : " edited by " + Hex(argument.edits.data(), argument.edits.size()));
    case 'v':
        return "bytes " + Hex(argument.bytes.data(), 1);
    default:
        return std::string(1, argument.kind) + ' ' + std::to_string(argument.number);
    }
}

// ---------------------------------------------------------------------------------------------------- places of a call

// The items that an address field may be read from, and some others.
void PushItem(lua_State *L, uint32_t number)
{
    if (number % 4 == 0) {
        return lua_pushinteger(L, number);
    }
    if (number % 4 == 1) {
        return lua_pushnil(L);
    }
    lua_newtable(L);
    for (int i = 1; i <= 16; ++i) {
        if (number % 4 == 2) {
            lua_pushinteger(L, i);
        } else {
            lua_pushstring(L, "x");
        }
        lua_rawseti(L, -2, i);
    }
}

void PlaceLua(const Argument &argument, const Subject &like, Place &place)
{
    const bool item = argument.kind == 'S';
    place.L = BuildTable(like, argument.bytes, argument.edits);
    if (item) {
        PushItem(place.L, argument.number);
    } else {
        lua_getfield(place.L, -1, "v");
    }
    place.top = lua_gettop(place.L);
}

uintptr_t Address(const void *pointer)
{
    return reinterpret_cast<uintptr_t>(pointer);
}

// Puts the argument where the call finds it, and gives the word that is handed over.
uintptr_t Put(const Argument &argument, const Trial &trial, const Subject &like, Place &place, const Place &first)
{
    if (argument.missing) {
        return 0;
    }
    switch (argument.kind) {
    case 't':
    case 'c':
        place.memory = place.lent = LentText(argument.text);
        place.pointer = place.memory.data();
        return argument.kind == 't' ? Address(place.pointer) : Address(&place.pointer);
    case 'v':
        place.memory = place.lent = argument.bytes;
        return Address(place.memory.data());
    case 'V':
    case 'P':
    case 'E':
        place.memory = place.lent = LentBytes(argument.bytes);
        return Address(place.memory.data() + (argument.kind == 'P' ? kBehindFirstWord : 0));
    case 'b':
    case 'o':
        place.memory = place.lent = Bytes(kTextRoom, kMark);
        place.pointer = argument.number == 0 ? nullptr : place.memory.data();
        return Address(argument.kind == 'b' ? static_cast<void *>(place.memory.data()) : &place.pointer);
    case 'n':
    case 'N':
        return Address(&place.number);
    case 'q': {
        const DataTypeRequest request{static_cast<uint8_t>(argument.number), trial.handle};
        place.memory.resize(sizeof request);
        std::memcpy(place.memory.data(), &request, sizeof request);
        return Address(place.memory.data());
    }
    case 'm':
        return trial.handle;
    case 'L':
    case 'S':
        PlaceLua(argument, like, place);
        return Address(place.L);
    case 'I':
        return static_cast<uintptr_t>(first.top);
    case 'R':
        return Address(kKeywords);
    case 'C':
        return std::size(kKeywords);
    case 'g':
        return Address(&place.noted);
    case '0':
        return 0;
    default:
        return argument.number;
    }
}

// What the call made of it.
void NotePlace(Trial &trial, const Argument &argument, Place &place)
{
    if (argument.missing) {
        return;
    }
    switch (argument.kind) {
    case 'c':
        Note(trial, "cursor", "at " + std::to_string(static_cast<uint8_t *>(place.pointer) - place.memory.data()));
        [[fallthrough]];
    case 't':
    case 'V':
    case 'P':
        return NoteKept(trial, argument.kind == 't' ? "text" : "value", place.lent, place.memory);
    case 'v':
    case 'E':
        return NoteWritten(trial, "value", place.lent, place.memory);
    case 'o':
        Note(trial, "slot", place.pointer == nullptr ? "empty" : place.pointer == place.memory.data() ? "kept" : "new");
        [[fallthrough]];
    case 'b':
        return NoteWritten(trial, "buffer", place.lent, place.memory, true);
    case 'n':
    case 'N':
        return Note(trial, "number", std::to_string(place.number));
    case 'g':
        return Note(trial, "groups", place.noted);
    case 'L':
    case 'S':
        return Note(trial, "stack", "grown by " + std::to_string(lua_gettop(place.L) - place.top));
    default:
        return;
    }
}

// Arguments travel as words: registers and stack slots are as wide, and what is narrower lies at their low end.
uint32_t CallWith(void *function, const uintptr_t (&words)[kMostArguments])
{
    using Function = uint32_t (*)(uintptr_t, uintptr_t, uintptr_t, uintptr_t, uintptr_t, uintptr_t, uintptr_t);
    return reinterpret_cast<Function>(function)(words[0], words[1], words[2], words[3], words[4], words[5], words[6]);
}

void MakeHelper(Trial &trial, const Helper &helper, const Subject &like, const std::vector<Argument> &arguments)
{
    Place places[kMostArguments];
    uintptr_t words[kMostArguments] = {};
    for (size_t i = 0; i < arguments.size(); ++i) {
        words[i] = Put(arguments[i], trial, like, places[i], places[0]);
    }
    void *function = Symbol(trial.plugIn, helper.name);
    const bool returns = helper.arguments[0] != '-';
    Watch(trial, [&] {
        const uint32_t code = CallWith(function, words);
        return returns ? code : DT_OK;
    });
    for (size_t i = 0; i < arguments.size(); ++i) {
        NotePlace(trial, arguments[i], places[i]);
    }
}

Call CallOf(Draw &draw, const Helper &helper, const Subject &like, const std::string &text)
{
    constexpr size_t kLongestEdits = 32;
    Drawn drawn{text, DrawValue(draw, like), {}, {}};
    drawn.other = DrawOther(draw, like, drawn.value);
    drawn.edits = DrawBytes(draw, OneIn(draw, 2) ? Below(draw, kLongestEdits) : 0);
    std::vector<Argument> arguments;
    std::string given;
    for (const char *kind = helper.arguments; *kind != '\0'; ++kind) {
        if (*kind == '?') {
            arguments.back().missing = OneIn(draw, 32);
        } else if (*kind != '-') {
            arguments.push_back(DrawArgument(draw, *kind, drawn));
        }
    }
    for (const Argument &argument : arguments) {
        given += (given.empty() ? "" : ", ") + Given(argument);
    }
    return {given, [=, &helper, &like](Trial &trial) { MakeHelper(trial, helper, like, arguments); }};
}

} // namespace

Call DrawHelper(Draw &draw, const Helper &helper, const Subject &like)
{
    return CallOf(draw, helper, like, DrawText(draw, like));
}

Subject LearnHelper(const Material &material, const PlugIn &old, const Helper &helper, const Subject &like)
{
    constexpr uint64_t kTried = 1000;
    Subject learned = like;
    learned.prints.clear();
    if (std::strpbrk(helper.arguments, "tc") == nullptr || like.texts.empty()) {
        return learned;
    }
    learned.texts.clear();
    const uint32_t handle = host::OpenHandle();
    for (uint64_t number = 0; number < kTried; ++number) {
        Draw draw = DrawFor(material, 0, number);
        const std::string &whole = Any(draw, like.texts);
        const std::string text = OneIn(draw, 2) ? whole : DrawPiece(draw, whole);
        Trial trial{old, kOld, handle};
        CallOf(draw, helper, like, text).make(trial);
        host::ResetHandle(handle);
        if (trial.code < DT_ERR_FAIL) { // some give a number
            learned.texts.push_back(text);
        }
    }
    host::CloseHandle(handle);
    return learned;
}

} // namespace bgp::compare
