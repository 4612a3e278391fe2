#include "fuzz/compare/comparison.h"

#include "fuzz/compare/watchdog.h"

#include <algorithm>
#include <cstdio>

namespace bgp::compare {

const std::vector<Fault> kFaults = {{"allocation", &host::Counters::allocations, &host::Faults::failAllocation},
                                    {"print", &host::Counters::prints, &host::Faults::failPrint},
                                    {"copy", &host::Counters::copies, &host::Faults::failCopy},
                                    {"scan", &host::Counters::scans, &host::Faults::failScan},
                                    {"help", &host::Counters::helpInits, &host::Faults::helpInitCode}};

namespace {

// The lines that the other answer has not.
void TellAnswer(const char *side, const Answer &answer, const Answer &other)
{
    constexpr size_t kLongest = 2000;
    for (const std::string &line : answer) {
        if (std::find(other.begin(), other.end(), line) == other.end()) {
            std::printf("    %s    %s%s\n", side, line.substr(0, kLongest).c_str(),
                        line.size() > kLongest ? " ..." : "");
        }
    }
}

// Counts the answers to the call under way, and shows them when they differ.
void Judge(Comparison &comparison, const Answer (&answers)[kSides], bool succeeded)
{
    constexpr uint64_t kShownOfOne = 2;
    Tally &operation = comparison.operations[underWay.operation];
    ++operation.calls;
    operation.succeeded += succeeded;
    if (answers[kOld] == answers[kNew]) {
        return;
    }
    ++operation.differing;
    Tally &place = comparison.differing[underWay.subject + ' ' + underWay.operation];
    if (place.differing++ < kShownOfOne && comparison.shown < comparison.options.show) {
        ++comparison.shown;
        TellCall();
        TellAnswer(kSideNames[kOld], answers[kOld], answers[kNew]);
        TellAnswer(kSideNames[kNew], answers[kNew], answers[kOld]);
    }
}

// Makes the call under way of both plug-ins; gives what the old one asked of the host.
host::Counters Make(Comparison &comparison, const Call &call, const host::Faults &faults)
{
    Answer answers[kSides];
    host::Counters counters{};
    bool succeeded = false;
    for (const size_t side : {kOld, kNew}) {
        Trial trial{comparison.plugIns[side], side, comparison.handle, faults};
        Enter(side);
        call.make(trial);
        Leave();
        host::ResetHandle(comparison.handle);
        answers[side] = std::move(trial.answer);
        if (side == kOld) {
            counters = trial.counters;
            succeeded = trial.code == DT_OK;
        }
    }
    Judge(comparison, answers, succeeded);
    return counters;
}

// The same call once for each kind of fault that it can meet, at one of the times that it asks the host. Gives how
// often.
uint64_t MakeFaulty(Comparison &comparison, const Call &call, const host::Counters &counters, Draw &draw)
{
    uint64_t made = 0;
    for (const Fault &fault : comparison.options.faults) {
        const uint32_t most = counters.*fault.counted;
        if (most == 0) {
            continue;
        }
        const auto which = static_cast<uint32_t>(Below(draw, most)) + 1;
        host::Faults faults;
        faults.*fault.fails = which;
        faults.failAllAfter = faults.failAllocation != 0 && OneIn(draw, 2);
        underWay.given = call.given + ", failing " + fault.name + ' ' + std::to_string(which) +
                         (faults.failAllAfter ? " and the later ones" : "");
        Make(comparison, call, faults);
        ++made;
    }
    return made;
}

Answer ToldOffers(const PlugIn &plugIn)
{
    Answer answer;
    for (const Offer &offer : plugIn.offers) {
        answer.push_back(Told(offer));
    }
    return answer;
}

// The first one when there is none of that name.
const Subject &SubjectOf(std::span<const Subject> subjects, const std::string &name)
{
    const auto at =
        std::find_if(subjects.begin(), subjects.end(), [&](const Subject &one) { return one.name == name; });
    return at == subjects.end() ? subjects.front() : *at;
}

// Whether both plug-ins have the helper; tells when not.
bool HaveBoth(const PlugIn (&plugIns)[kSides], const Helper &helper)
{
    bool both = true;
    for (const size_t side : {kOld, kNew}) {
        if (Symbol(plugIns[side], helper.name) == nullptr) {
            std::printf("not compared: %s, which the %s plug-in lacks\n", helper.name, kSideNames[side]);
            both = false;
        }
    }
    return both;
}

} // namespace

void CompareRegistration(Comparison &comparison)
{
    underWay = {"all types", "registration", "the rows and their sub-types"};
    const Answer offers[kSides] = {ToldOffers(comparison.plugIns[kOld]), ToldOffers(comparison.plugIns[kNew])};
    Judge(comparison, offers, true);
    for (const Offer &offer : comparison.plugIns[kOld].offers) {
        underWay.given = "the host refuses type " + std::to_string(offer.row.TypeId);
        Answer answers[kSides];
        for (const size_t side : {kOld, kNew}) {
            Enter(side);
            answers[side] = Registration(comparison.plugIns[side], offer.row.TypeId);
            Leave();
        }
        Judge(comparison, answers, true);
    }
}

std::vector<Target> TargetsOf(const Comparison &comparison, const Material &material,
                              std::vector<std::unique_ptr<Subject>> &likes)
{
    std::vector<Target> targets;
    for (const Operation &operation : kOperations) {
        for (const Subject &subject : material.subjects) {
            if (operation.offered(subject, kOld) && operation.offered(subject, kNew)) {
                const auto draw = [&](Draw &from) { return operation.draw(from, subject); };
                targets.insert(targets.end(), operation.share, {subject.name, operation.name, draw});
            }
        }
    }
    for (const Helper &helper : kHelpers) {
        if (HaveBoth(comparison.plugIns, helper)) {
            likes.push_back(std::make_unique<Subject>(
                LearnHelper(material, comparison.plugIns[kOld], helper, SubjectOf(material.subjects, helper.like))));
            const Subject &like = *likes.back();
            targets.push_back({helper.name, "helper", [&](Draw &from) { return DrawHelper(from, helper, like); }});
        }
    }
    return targets;
}

void CompareCalls(Comparison &comparison, const std::vector<Target> &targets, const Material &material)
{
    constexpr size_t kFaultyShare = 8;
    const Options &options = comparison.options;
    for (uint64_t number = options.from, made = 0; made < options.calls; ++number, ++made) {
        const Target &target = targets[number % targets.size()];
        Draw draw = DrawFor(material, options.seed, number);
        const Call call = target.draw(draw);
        underWay = {target.subject, target.operation, call.given, number};
        const host::Counters counters = Make(comparison, call, {});
        if (OneIn(draw, kFaultyShare)) {
            made += MakeFaulty(comparison, call, counters, draw);
        }
    }
}

} // namespace bgp::compare
