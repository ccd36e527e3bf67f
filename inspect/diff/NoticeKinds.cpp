#include "inspect/diff/Verdict.h"

namespace Bfri {

namespace {

constexpr auto info = NoticeLevel::info;
constexpr auto onHandles = NoticeLevel::handle;
constexpr auto breaking = NoticeLevel::breaking;

constexpr NoticeKind kinds[] = {
    { "BD101", "removed-record", breaking, "removed",
      "The new configuration does not have the record on these pipes.",
      "Remove it from what the agent uses, or bring it back in the P4 program." },
    { "BD102", "renamed-record", breaking, "renamed",
      "The record has another name, and agrees with the old one in nearly everything else: tables of one "
      "type in handle, size, stages and actions, or in three of these; where the handle differs, in all "
      "the rest and in the keys, and no third table does. Actions of one table pair by handle, learn "
      "quantas and hashes by handle with one other difference at most, headers and PHV fields where "
      "nothing else differs.",
      "Use the new name in the agent. With --no-renames, the pair is a removed and an added record." },
    { "BD103", "left-out-record", breaking, "left out",
      "The context file still has the table or the learn quanta, but the model has no record of it: it is "
      "not resource-controllable, or has static entries, or no \"lq_cfg_type\". The text says which.",
      "Make the table controllable without constant entries, or remove it from what the agent programs." },
    { "BD104", "shrunk-record", breaking, "shrunk", "The record has less room than before.",
      "Check whether the agent's entries still fit." },
    { "BD105", "changed-answer", breaking, "changed",
      "A query by name has another answer: a flag, a width, the associated table, the size of a header, "
      "the position of a hash's field.",
      "Check whether the agent depends on the old answer." },
    { "BD106", "hidden-record", breaking, "hidden by a namesake",
      "Queries by name answered for this record; now they answer for another one with the same name, most "
      "likely on another pipe.",
      "Look the record up by handle or by index, or rename one of them." },
    { "BD107", "duplicate-name", breaking, "with a duplicate name",
      "Several records of one program have this name now, as findings BF201 to BF203 say. "
      "Queries by name answer for the first.",
      "Rename all but one in the P4 program." },
    { "BD108", "duplicate-handle", breaking, "with a duplicate handle",
      "Records with different names share this handle now, as findings BF204 and BF205 say.",
      "Compile the program again; the compiler numbers its records." },
    { "BD109", "replaced-program", breaking, "with another program",
      "The pipe runs a program that other pipes ran before, or an edited form of such a program, by the "
      "names that they have in common.",
      "If the pipes were not meant to change programs, correct \"pipes\" in the switch configuration." },
    { "BD110", "removed-program", breaking, "without a program", "The pipe no longer runs a program.",
      "If it should run one, add the pipe to a pipeline of the switch configuration." },
    { "BD201", "renumbered-handle", onHandles, "renumbered", "The record has another handle.",
      "Let the agent look up the handle when it starts." },
    { "BD202", "reused-handle", onHandles, "with a reused handle",
      "The handle of this record is now the handle of another record.",
      "An agent that kept the number would program the wrong record: look up handles when the agent "
      "starts." },
    { "BD203", "removed-handle", onHandles, "no longer placed", "No placed table has this handle any longer.",
      "Look up handles when the agent starts." },
    { "BD301", "added-record", info, "added", "The old configuration does not have the record.",
      "Nothing, unless the agent is to use it." },
    { "BD302", "returned-record", info, "no longer left out",
      "The model omitted the record before, for the reason in the text, and has it now.",
      "Nothing, unless the agent is to use it." },
    { "BD303", "grown-record", info, "grown", "The record has more room than before.", "Nothing." },
    { "BD304", "moved-record", info, "in other stages",
      "The record takes other stages, or its entries are distributed over them differently.", "Nothing." },
    { "BD305", "shifted-hit-bits", info, "with shifted hit bits",
      "Tables have their hit bits in other slots: their ranges start elsewhere, end elsewhere, or are new or "
      "gone. Where the number of entries changed, or whether there are hit bits, another notice says so.",
      "Nothing: slots are looked up when they are needed." },
    { "BD306", "changed-references", info, "with other references",
      "A placed table lists other counters, meters or registers.", "Nothing, if it is intended." },
    { "BD307", "unread-table", info, "with unread differences",
      "Members of the table that the library does not read differ, such as its keys, the parameters of an "
      "action, or its memory.",
      "Check whether software that programs the chip without the library depends on them." },
    { "BD308", "unread-member", info, "different",
      "A top-level member of the context file differs in values that the library does not read.",
      "Check whether software that programs the chip without the library depends on it." },
    { "BD309", "edited-program", info, "with an edited program",
      "The context file of the pipe's program has other values.", "See the other notices." },
    { "BD310", "added-program", info, "with a first program", "The pipe ran no program before.", "Nothing." },
    { "BD311", "changed-configuration", info, "changed",
      "Something differs that does not belong to a record: the masks of the pipes, whether handles carry "
      "the pipe, or the number of hit-bit slots.",
      "Nothing, if it is intended." },
    { "BD312", "reordered-records", info, "in another order",
      "Records in both configurations are in another order, so their indexes differ.",
      "Nothing, for an agent that looks up by name or handle." },
};

} // namespace

char const* wordOf( NoticeLevel level ) {
    return level == breaking ? "breaking" : level == onHandles ? "handle" : "info";
}

std::span<NoticeKind const> noticeKinds() { return kinds; }

} // namespace Bfri
