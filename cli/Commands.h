#pragma once

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

/// A command line, understood.
struct Request {
    Command const* command = nullptr;
    String conf;
    String name;
    Format format = Format::text;
};

/// What a configuration's context files may do to a command that cannot use them.
enum class OnBadData { explain, dieAsLibrary };

/// A row of the command table, from which the help comes, too.
struct Command {
    char const* word;
    char const* description;
    char const* nameDescription; ///< of the argument NAME; null for a command without one
    bool offersJson;
    bool offersCsv;
    OnBadData onBadData;
    void ( *run )( Model const& model, Request const& request, Streams const& io );
};

/// Every command, in the order of the help.
std::span<Command const> commands();

void summary( Model const& model, Request const& request, Streams const& io );
void tables( Model const& model, Request const& request, Streams const& io );
void resources( Model const& model, Request const& request, Streams const& io );
void table( Model const& model, Request const& request, Streams const& io );
void dump( Model const& model, Request const& request, Streams const& io );

} // namespace Bfri
