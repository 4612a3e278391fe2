#include "fuzz/compare/watchdog.h"

#include "fuzz/compare/plugins.h"

#include <csignal>
#include <cstdio>
#include <cstring>
#include <sys/time.h>
#include <unistd.h>

namespace bgp::compare {

UnderWay underWay;

namespace {

// Entries so far, and how many there were at the last look; odd while a plug-in is entered.
volatile uint64_t entries = 0, seen = 0;
volatile size_t entered = kOld;
volatile int statusOfGrief = 1;

// The last words: nothing else can be done then, and what can be said is what was noted before.
void Bury(const char *reason)
{
    TellCall();
    std::printf("    %s    %s\n", kSideNames[entered], reason);
    std::fflush(stdout);
    _exit(statusOfGrief);
}

void OnCrash(int signal)
{
    Bury(strsignal(signal));
}

void OnTimer(int)
{
    if (entries % 2 == 1 && entries == seen) {
        Bury("does not return");
    }
    seen = entries;
}

void Handle(int signal, void (*handler)(int))
{
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = static_cast<int>(SA_ONSTACK | SA_RESTART | (handler == OnCrash ? SA_RESETHAND : 0));
    sigaction(signal, &action, nullptr);
}

} // namespace

void WatchOver(uint64_t patience, int status)
{
    static uint8_t stack[1 << 16]; // a call may have used up the ordinary one
    stack_t own = {};
    own.ss_sp = stack;
    own.ss_size = sizeof stack;
    sigaltstack(&own, nullptr);
    statusOfGrief = status;
    for (const int signal : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT}) {
        Handle(signal, OnCrash);
    }
    Handle(SIGALRM, OnTimer);
    itimerval timer = {};
    timer.it_value.tv_sec = timer.it_interval.tv_sec = static_cast<time_t>(patience);
    setitimer(ITIMER_REAL, &timer, nullptr);
}

void Enter(size_t side)
{
    entered = side;
    entries = entries + 1;
}

void Leave()
{
    entries = entries + 1;
}

void TellCall()
{
    std::printf("differ: %s %s, call %llu\n    given  %s\n", underWay.subject.c_str(), underWay.operation.c_str(),
                static_cast<unsigned long long>(underWay.number), underWay.given.c_str());
}

} // namespace bgp::compare
