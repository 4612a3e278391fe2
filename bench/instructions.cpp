// The instructions of operations, counted by callgrind, under which this program runs: for each operation that is asked
// for, callgrind writes a file with the operation's name and what kCounted calls of it took, over as many texts.
//
//   bgp_instructions                the operations that the regression check watches
//   bgp_instructions --all          all that there are
//   bgp_instructions --dearer=NAME  the former, one of them made dearer: one call in twenty is made twice
//   bgp_instructions --environment  what counts depend on beside the sources: processor, compiler, C library
#include "calls.h"

#include "bgp_standalone_host.hpp"

#include <gnu/libc-version.h>
#include <sys/utsname.h>
#include <valgrind/callgrind.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

using namespace bgp::bench;

namespace {

namespace host = bgp::standalone;

constexpr uint32_t kCounted = 2000;
constexpr uint32_t kDearer = kCounted / 20;

// "type, notation, operation"
constexpr const char *kWatched[] = {
    "ASNUM, plain, in",           "ASNUM, plain, out",           "ASNUM, dotted, in",
    "ASNUM_ENHANCE, 8 plain, in", "ASNUM_ENHANCE, 8 plain, out", "COMMUNITY, n:n, in",
    "COMMUNITY, n:n, out",        "CMNTY_ENHANCE, 8 n:n, out",   "LARGECOMMUNITY, n:n:n, in",
    "VRFRD, a.b.c.d:n, in",       "VRFRD, a.b.c.d:n, out",       "VRFRT, AS:n, in",
    "VRFRT, AS:n, out",           "VRFRT, AS:n, compare",        "BOLPREFIX, IPv4, in",
    "BOLPREFIX, IPv6, in",        "BOLPREFIX, IPv6, out",        "BOLPREFIX, EVPN MAC/IP, in",
    "BGPLSPREFIX, node, in",      "BGPLSPREFIX, node, out",
};

std::string NameOf(const Row &row, const Call &call, bool withBy)
{
    return std::string(row.type) + ", " + row.notation + ", " + call.operation + (withBy ? ", " : "") +
           (withBy ? call.by : "");
}

bool IsWatched(const std::string &name)
{
    for (const char *watched : kWatched) {
        if (name == watched) {
            return true;
        }
    }
    return false;
}

bool IsPlugIn(const Call &call)
{
    return std::strcmp(call.by, "plug-in") == 0;
}

void Count(const Call &call, Subject &subject, uint32_t more, const char *name)
{
    subject.next = 0;
    call.run(subject, kCounted + more); // what is bound and taken once
    subject.next = 0;
    CALLGRIND_START_INSTRUMENTATION;
    CALLGRIND_ZERO_STATS;
    call.run(subject, kCounted + more);
    CALLGRIND_DUMP_STATS_AT(name);
    CALLGRIND_STOP_INSTRUMENTATION;
}

struct Order {
    bool all;
    const char *dearer; // or null
};

// Returns how many operations were counted.
uint32_t CountRow(const Row &row, const Order &order, uint32_t handle, lua_State *lua)
{
    const Calls calls = AllCalls();
    Subject subject{row, {}, handle, lua};
    uint32_t counted = 0;
    for (const Call *call = calls.at; call < calls.at + calls.count; ++call) {
        const std::string name = NameOf(row, *call, order.all);
        if (!order.all && (!IsPlugIn(*call) || !IsWatched(name))) {
            continue;
        }
        if (subject.ring.count == 0) {
            subject.ring = MakeRing(row, kCounted, handle);
        }
        if (IsWanted(*call, subject)) {
            const bool isDearer = order.dearer != nullptr && name == order.dearer;
            Count(*call, subject, isDearer ? kDearer : 0, name.c_str());
            ++counted;
        }
    }
    return counted;
}

int TellEnvironment()
{
    utsname system{};
    uname(&system);
    std::printf("processor %s\ncompiler %s\nlibc %s\n", system.machine, __VERSION__, gnu_get_libc_version());
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    constexpr char kDearerOption[] = "--dearer=";
    const std::string option = argc > 1 ? argv[1] : "";
    if (option == "--environment") {
        return TellEnvironment();
    }
    const bool hasDearer = option.compare(0, sizeof kDearerOption - 1, kDearerOption) == 0;
    const Order order{option == "--all", hasDearer ? argv[1] + sizeof kDearerOption - 1 : nullptr};
    if (argc > 2 || (argc == 2 && !order.all && !(hasDearer && IsWatched(order.dearer)))) {
        std::fprintf(stderr, "usage: bgp_instructions [--all | --dearer=NAME | --environment]\n");
        return 2;
    }
    std::string error;
    if (RUNNING_ON_VALGRIND == 0 || !host::LoadPlugIn(BGP_PLUGIN_PATH, &error)) {
        std::fprintf(stderr, "instructions: %s\n", error.empty() ? "to be run under callgrind" : error.c_str());
        return 3;
    }
    const uint32_t handle = host::OpenHandle();
    lua_State *lua = host::NewLua();
    uint32_t counted = 0;
    const Rows rows = AllRows();
    for (const Row *row = rows.at; row < rows.at + rows.count; ++row) {
        counted += CountRow(*row, order, handle, lua);
    }
    host::CloseLua(lua);
    if (!order.all && counted != sizeof kWatched / sizeof *kWatched) {
        std::fprintf(stderr, "instructions: a watched operation is none of the rows'\n");
        return 3;
    }
    return 0;
}
