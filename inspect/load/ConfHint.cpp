#include "inspect/load/ConfHint.h"

#include "inspect/load/ContextText.h"

#include <filesystem>
#include <fstream>

namespace Bfri {

namespace {

namespace fs = std::filesystem;

/// Whether a section that only context files have is a member of the object that the file is.
bool isContextFile( String const& path ) {
    bool found = false;
    ContextText text( path );
    text.eachMember( [ & ]( String const& section ) {
        found |= section == "tables" || section == "phv_allocation";
        text.skip();
    } );
    return found;
}

String folderHint( fs::path const& folder ) {
    fs::path const inside = folder / "switch.conf";
    std::error_code error;
    return fs::exists( inside, error ) ? "that is a folder; " + inside.string() + " is in it"
                                       : "that is a folder; CONF is the file that names the context files";
}

} // namespace

bool isGzip( String const& path ) {
    std::error_code error;
    if( !fs::is_regular_file( path, error ) ) // a pipe would wait for its writer
        return false;
    std::ifstream file( path, std::ios::binary );
    return file.get() == 0x1F && file.get() == 0x8B;
}

void addHint( Fault& fault ) {
    std::error_code error;
    if( fs::is_directory( fault.file, error ) )
        fault.hint = folderHint( fault.file );
    else if( isContextFile( fault.file ) )
        fault.hint = "that is a context file; CONF is the switch configuration that names it";
    if( !isGzip( fault.file ) )
        return;
    fault.problem = "the file is gzip, as only context files may be";
    fault.expected = "a file that holds plain JSON";
    fault.found.clear();
    fault.line.reset();
    fault.column.reset();
}

} // namespace Bfri
