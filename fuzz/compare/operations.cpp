// The operations of a row, slot by slot: what is drawn for a call, and what is noted of its answer.
#include "fuzz/compare/calls.h"

namespace bgp::compare {
namespace {

constexpr uint16_t kUntouched = 0xEEEE;

void NoteResult(Trial &trial, uint16_t typeId, uint16_t length)
{
    Note(trial, "out type", typeId == kUntouched ? "untouched" : std::to_string(typeId));
    Note(trial, "out length", length == kUntouched ? "untouched" : std::to_string(length));
}

// ------------------------------------------------------------------------------------------------------------ FormatIn

Call DrawFormatIn(Draw &draw, const Subject &subject)
{
    const uint8_t mode = DrawMode(draw);
    const std::string text = DrawText(draw, subject);
    const uint16_t type = DrawTypeId(draw, subject.rows[kOld].TypeId);
    const auto length = static_cast<uint32_t>(OneIn(draw, 8) ? Below(draw, text.size() + 2) : text.size() + 1);
    const size_t missing = DrawMissing(draw, 5);
    const auto make = [=, &subject](Trial &trial) {
        const DataTypeRequest request{mode, trial.handle};
        const Bytes lent = LentText(text);
        Bytes memory = lent;
        uint16_t typeId = kUntouched, outLength = kUntouched;
        void *value = &memory;
        Watch(trial, [&] {
            return subject.rows[trial.side].FormatIn(
                Unless(&request, missing, 0), type, length, Unless(reinterpret_cast<char *>(memory.data()), missing, 1),
                Unless(&typeId, missing, 2), Unless(&outLength, missing, 3), Unless(&value, missing, 4));
        });
        NoteKept(trial, "text", lent, memory);
        NoteResult(trial, typeId, outLength);
        const bool given = trial.code == DT_OK && value != &memory && value != nullptr && outLength != kUntouched;
        Note(trial, "value",
             given              ? Hex(static_cast<const uint8_t *>(value), outLength)
             : value == &memory ? "untouched"
             : value == nullptr ? "null"
                                : "a pointer");
        GiveBack(value);
    };
    return {GivenMode(mode) + ", text " + Quoted(text) + GivenLength(length) + GivenTypeId(type) +
                GivenMissing(missing),
            make};
}

// ----------------------------------------------------------------------------------------------------------- FormatOut

std::string ToldBuffer(const void *buffer, const void *lent)
{
    return buffer == nullptr ? "none" : buffer == lent ? "the caller's" : "its own";
}

Call DrawFormatOut(Draw &draw, const Subject &subject)
{
    const uint8_t mode = DrawMode(draw);
    const Bytes content = DrawPrintable(draw, subject);
    const uint16_t type = DrawTypeId(draw, subject.rows[kOld].TypeId);
    const uint32_t length = DrawLength(draw, subject, content.size());
    const bool lends = OneIn(draw, 2);
    const size_t missing = DrawMissing(draw, 5);
    const auto make = [=, &subject](Trial &trial) {
        const DataTypeRequest request{mode, trial.handle};
        const Bytes lent = LentBytes(content), buffer(kTextRoom, kMark);
        Bytes value = lent, text = buffer;
        uint16_t typeId = kUntouched, outLength = kUntouched;
        void *out = lends ? text.data() : nullptr;
        Watch(trial, [&] {
            return subject.rows[trial.side].FormatOut(Unless(&request, missing, 0), type, length,
                                                      Unless(value.data(), missing, 1), Unless(&typeId, missing, 2),
                                                      Unless(&outLength, missing, 3), Unless(&out, missing, 4));
        });
        const bool isText = typeId == DT_TYPE_TEXT;
        NoteKept(trial, "value", lent, value);
        NoteResult(trial, typeId, outLength);
        Note(trial, "buffer", ToldBuffer(out, text.data()));
        NoteWritten(trial, "caller's buffer", buffer, text, isText);
        if (trial.code == DT_OK && out != nullptr && out != text.data() && outLength != kUntouched) {
            const auto *bytes = static_cast<const uint8_t *>(out);
            Note(trial, "own buffer", isText ? Quoted(bytes, outLength) : Hex(bytes, outLength));
        }
        GiveBack(out);
    };
    return {GivenMode(mode) + ", " + GivenValue(content) + GivenLength(length) + GivenTypeId(type) +
                (lends ? ", into a buffer" : "") + GivenMissing(missing),
            make};
}

// ------------------------------------------------------------------------------------ Check, Help, Compare, byte order

Call DrawCheck(Draw &draw, const Subject &subject)
{
    const Bytes content = DrawValue(draw, subject);
    const uint16_t type = DrawTypeId(draw, subject.rows[kOld].TypeId);
    const uint32_t length = DrawLength(draw, subject, content.size());
    const size_t missing = DrawMissing(draw, 2);
    const auto make = [=, &subject](Trial &trial) {
        const Bytes lent = LentBytes(content);
        Bytes value = lent;
        Watch(trial, [&] {
            return subject.rows[trial.side].Check(Unless(&trial, missing, 0), type, length,
                                                  Unless(value.data(), missing, 1));
        });
        NoteKept(trial, "value", lent, value);
    };
    return {GivenValue(content) + GivenLength(length) + GivenTypeId(type) + GivenMissing(missing), make};
}

void NoteHelp(Trial &trial, const DataTypeHelpInfo &info)
{
    Note(trial, "help",
         std::to_string(trial.counters.helpInits) + " prepared with word " +
             std::to_string(trial.counters.lastHelpWord) + ", " + std::to_string(trial.counters.helpClears) +
             " cleared");
    if (info.EntryCount == 0 || info.Entries == nullptr) {
        return Note(trial, "entries", "none");
    }
    char *text = info.Entries[0].Text;
    Note(trial, "entries", std::to_string(info.EntryCount) + (text == nullptr ? ", no text" : ' ' + Quoted(text)));
    GiveBack(text);
}

Call DrawHelp(Draw &draw, const Subject &subject)
{
    const uint8_t mode = DrawMode(draw);
    const std::string typed = DrawText(draw, subject);
    const uint16_t type = DrawTypeId(draw, subject.rows[kOld].TypeId);
    const auto first = static_cast<uint32_t>(Below(draw, 5)), second = static_cast<uint32_t>(Below(draw, 5));
    const size_t missing = DrawMissing(draw, 4);
    const auto make = [=, &subject](Trial &trial) {
        const DataTypeRequest request{mode, trial.handle};
        const Bytes lent = LentText(typed);
        Bytes text = lent;
        const uint32_t words[] = {first, second};
        DataTypeHelpInfo info{0, nullptr};
        Watch(trial, [&] {
            return subject.rows[trial.side].Help(Unless(&request, missing, 0), type, 0,
                                                 Unless(reinterpret_cast<const char *>(text.data()), missing, 1),
                                                 Unless(words, missing, 2), Unless(&info, missing, 3));
        });
        NoteKept(trial, "text", lent, text);
        NoteHelp(trial, info);
    };
    return {GivenMode(mode) + ", text " + Quoted(typed) + GivenTypeId(type) + ", words " + std::to_string(first) +
                " and " + std::to_string(second) + GivenMissing(missing),
            make};
}

Call DrawCompare(Draw &draw, const Subject &subject)
{
    const Bytes left = DrawValue(draw, subject);
    const Bytes right = DrawOther(draw, subject, left);
    const uint32_t length = DrawLength(draw, subject, left.size());
    const size_t missing = DrawMissing(draw, 1); // values are taken on trust
    const auto make = [=, &subject](Trial &trial) {
        const Bytes lentLeft = LentBytes(left), lentRight = LentBytes(right);
        Bytes one = lentLeft, other = lentRight;
        Watch(trial, [&] {
            return static_cast<uint32_t>(
                subject.rows[trial.side].Compare(Unless(&trial, missing, 0), length, one.data(), other.data()));
        });
        NoteKept(trial, "left", lentLeft, one);
        NoteKept(trial, "right", lentRight, other);
    };
    return {GivenValue(left) + ", " + GivenValue(right) + GivenLength(length) + GivenMissing(missing), make};
}

Call DrawEndian(Draw &draw, const Subject &subject)
{
    const Bytes content = DrawValue(draw, subject);
    const uint16_t type = DrawTypeId(draw, subject.rows[kOld].TypeId);
    const uint32_t length = DrawLength(draw, subject, content.size());
    const size_t missing = DrawMissing(draw, 1); // values are taken on trust
    const auto make = [=, &subject](Trial &trial) {
        const Bytes lent = LentBytes(content);
        Bytes value = lent;
        Watch(trial,
              [&] { return subject.rows[trial.side].Endian(Unless(&trial, missing, 0), type, length, value.data()); });
        NoteWritten(trial, "value", lent, value);
    };
    return {GivenValue(content) + GivenLength(length) + GivenTypeId(type) + GivenMissing(missing), make};
}

// -------------------------------------------------------------------------------------------------------------- layout

std::string ToldField(const BgpField &field)
{
    return std::string(field.Name == nullptr ? "(null)" : field.Name) + " at " + std::to_string(field.Offset) + ": " +
           std::to_string(field.Count) + " of " + std::to_string(field.Width) + ", kind " + std::to_string(field.Kind) +
           ", Lua keeps " + std::to_string(field.LuaKeeps) + ", pops " + std::to_string(field.LuaPops);
}

void NoteLayout(Trial &trial, const BgpLayout *layout)
{
    if (layout == nullptr) {
        return Note(trial, "layout", "none");
    }
    Note(trial, "layout", "of " + std::to_string(layout->Length) + " bytes");
    for (uint32_t i = 0; i < layout->FieldCount; ++i) {
        Note(trial, "field", ToldField(layout->Fields[i]));
    }
}

Call DrawDescribe(Draw &draw, const Subject &subject)
{
    const Bytes content = DrawValue(draw, subject);
    const uint16_t type = DrawTypeId(draw, subject.rows[kOld].TypeId);
    const uint32_t length = DrawLength(draw, subject, content.size());
    const auto make = [=](Trial &trial) {
        using Describe = const BgpLayout *(*)(uint32_t typeId, const void *value, uint32_t length);
        const auto describe = reinterpret_cast<Describe>(Symbol(trial.plugIn, "Bgp_DescribeValue"));
        const Bytes value = LentBytes(content);
        const BgpLayout *layout = nullptr;
        Watch(trial, [&] {
            layout = describe == nullptr ? nullptr : describe(type, value.data(), length);
            return layout == nullptr ? DT_ERR_FAIL : DT_OK;
        });
        NoteLayout(trial, layout);
    };
    return {GivenValue(content) + GivenLength(length) + GivenTypeId(type), make};
}

template <auto Slot>
bool Offers(const Subject &subject, size_t side)
{
    return subject.rows[side].*Slot != nullptr;
}

bool OffersReader(const Subject &subject, size_t side)
{
    return subject.readers[side] != nullptr;
}

bool Always(const Subject &, size_t)
{
    return true;
}

} // namespace

const std::vector<Operation> kOperations = {
    {"FormatIn", 4, Offers<&DataTypeDescriptor::FormatIn>, DrawFormatIn},
    {"FormatOut", 4, Offers<&DataTypeDescriptor::FormatOut>, DrawFormatOut},
    {"Check", 1, Offers<&DataTypeDescriptor::Check>, DrawCheck},
    {"Help", 1, Offers<&DataTypeDescriptor::Help>, DrawHelp},
    {"Compare", 2, Offers<&DataTypeDescriptor::Compare>, DrawCompare},
    {"LuaSet", 2, Offers<&DataTypeDescriptor::LuaSet>, DrawLuaSet},
    {"LuaGet", 4, Offers<&DataTypeDescriptor::LuaGet>, DrawLuaGet},
    {"reader", 2, OffersReader, DrawReader},
    {"Endian", 1, Offers<&DataTypeDescriptor::Endian>, DrawEndian},
    {"layout", 1, Always, DrawDescribe},
};

} // namespace bgp::compare
