#include "inspect/load/ConfPath.h"

#include "inspect/rows/Utf8.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <system_error>

#include <rapidjson/istreamwrapper.h>
#include <rapidjson/reader.h>
#include <sys/mman.h>
#include <unistd.h>

namespace Bfri {

namespace {

namespace fs = std::filesystem;

/// Stops a reader at the first known top-level member.
struct FirstKnownMember : rapidjson::BaseReaderHandler<rapidjson::UTF8<>, FirstKnownMember> {
    static constexpr std::string_view contextFiles[] = { "tables", "learn_quanta", "phv_allocation",
                                                         "flexible_headers", "dynamic_hash_calculations" };

    bool StartObject() { return ++depth > 0; }
    bool EndObject( rapidjson::SizeType ) { return --depth > 0; }
    bool StartArray() { return depth++ > 0; } // in an array there are no members
    bool EndArray( rapidjson::SizeType ) { return --depth > 0; }
    bool Key( char const* text, rapidjson::SizeType length, bool ) {
        std::string_view const name( text, length );
        if( depth > 1 )
            return true;
        isContextFile = std::find( std::begin( contextFiles ), std::end( contextFiles ), name ) !=
                        std::end( contextFiles );
        return !isContextFile && name != "devices";
    }

    unsigned depth = 0;
    bool isContextFile = false;
};

bool isContext( String const& path ) {
    std::error_code error;
    if( !fs::is_regular_file( path, error ) ) // a pipe would wait for its writer
        return false;
    if( isGzip( path ) )
        return true;
    std::ifstream file( path, std::ios::binary );
    rapidjson::IStreamWrapper stream( file );
    FirstKnownMember first;
    rapidjson::Reader().Parse<rapidjson::kParseIterativeFlag>( stream, first );
    return first.isContextFile;
}

/// A file in memory with a switch configuration for one context file.
int makeSwitchConf( String const& contextFile ) {
    String const text = "{\"devices\":[{\"pipelines\":[{\"context_file\":" +
                        jsonQuoted( fs::absolute( contextFile ).string() ) + ",\"pipes\":[0]}]}]}";
    int const descriptor = memfd_create( "switch.conf", MFD_CLOEXEC );
    bool const isWritten = descriptor >= 0 && ::write( descriptor, text.data(), text.size() ) ==
                                                  static_cast<ssize_t>( text.size() );
    if( !isWritten )
        throw std::system_error( errno, std::generic_category(), "can't make a switch configuration" );
    return descriptor;
}

} // namespace

bool isGzip( String const& path ) {
    std::error_code error;
    if( !fs::is_regular_file( path, error ) )
        return false;
    std::ifstream file( path, std::ios::binary );
    return file.get() == 0x1F && file.get() == 0x8B;
}

ConfPath::ConfPath( String const& path ) : switchConf_( path ) {
    std::error_code error;
    fs::path const inside = fs::path( path ) / "switch.conf";
    if( fs::exists( inside, error ) )
        switchConf_ = inside.string();
    else if( isContext( path ) ) {
        descriptor_ = makeSwitchConf( path );
        switchConf_ = "/proc/self/fd/" + std::to_string( descriptor_ );
    }
}

ConfPath::~ConfPath() {
    if( descriptor_ >= 0 )
        ::close( descriptor_ );
}

std::vector<String> configurationsIn( String const& path ) {
    namespace fs = std::filesystem;
    std::error_code error;
    std::vector<String> found;
    if( !fs::is_directory( path, error ) || fs::exists( fs::path( path ) / "switch.conf", error ) )
        return { path };
    for( fs::recursive_directory_iterator entry( path, error ), end; !error && entry != end;
         entry.increment( error ) ) {
        if( entry->path().filename() == "switch.conf" )
            found.push_back( entry->path().string() );
    }
    std::sort( found.begin(), found.end() );
    return found.empty() ? std::vector<String>{ path } : found;
}

void addHint( Fault& fault ) {
    std::error_code error;
    if( !fs::is_directory( fault.file, error ) )
        return;
    fault.hint = "that folder has no switch.conf, the file that names the context files";
    auto const below = configurationsIn( fault.file );
    if( below.front() != fault.file )
        fault.hint += "; this command takes one configuration, and there " +
                      ( below.size() == 1 ? String( "is 1" ) : "are " + std::to_string( below.size() ) ) +
                      " below it: " + below.front() + ( below.size() > 1 ? ", ..." : "" );
}

} // namespace Bfri
