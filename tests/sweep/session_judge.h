// Judges calls on a real link. The reference till lives through every way in which the till may have met what
// went over the wire; a call is true when one of them makes it return what it did, in the time that it took,
// and the printer's record bears that out or the wire could not tell.
#pragma once

#include "tests/sweep/judge.h"
#include "tests/sweep/overheard_wire.h"
#include "tests/sweep/printer_on_link.h"

#include <span>

namespace telvofm::test::sweep {

struct LinkCall
{
    const CallPlan& plan;
    Outcome outcome;
    Milliseconds lasted;
    CallAtPrinter atPrinter;
};

struct LinkSession
{
    Link link;
    Overheard overheard;
    // What the byte is for that the fault struck on its way to the till.
    std::optional<Role> struckRole;
};

// The last of these calls, with which the session begins; `isWhole`: and ends.
Judgement judgedBySession(const LinkSession& session, std::span<const LinkCall> calls, bool isWhole);

} // namespace telvofm::test::sweep
