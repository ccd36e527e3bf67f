#pragma once

#include "cli/Choice.h"
#include "resourceinfo/BfResourceInfoIntf.h"

#include <ostream>
#include <span>

namespace Bfri {

using Model = BfResourceInfo::BfResourceInfoIntf;

enum class Format { text, json, csv };

/// Where a process talks: the answer goes to out and nothing else does.
struct Streams {
    std::ostream& out;
    std::ostream& err;
};

struct Command;
struct Listing;

/// A command line, understood.
struct Request {
    Command const* command = nullptr;
    String conf;
    String name;
    Format format = Format::text;
    Choice choice = {};
};

/// What a configuration's context files may do to a command that cannot use them.
enum class OnBadData { explain, dieAsLibrary };

/// A row of the command table, from which the help comes, too.
struct Command {
    char const* word;
    char const* description;
    char const* nameDescription; ///< of the argument NAME; null for a command without one
    bool offersJson;
    Listing const* listing; ///< what a list command lists, with a choice of rows and in CSV, too; else null
    OnBadData onBadData;
    void ( *run )( Model const& model, Request const& request, Streams const& io );
};

/// Every command, in the order of the help.
std::span<Command const> commands();

void list( Model const& model, Request const& request, Streams const& io );
void summary( Model const& model, Request const& request, Streams const& io );
void table( Model const& model, Request const& request, Streams const& io );
void dump( Model const& model, Request const& request, Streams const& io );

} // namespace Bfri
