#include "ostler/Ostler.h"

#include "ostler/Json.h"
#include "vessa/OpenFile.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>
#include <unistd.h>

namespace Ostler {

namespace {

/// The file cannot be read.
struct ReadError {
    String reason;
};

using File = std::unique_ptr<std::FILE, int ( * )( std::FILE* )>;

File openFile( String const& path ) {
    auto const opened = Vessa::openRegularFile( path );
    if( opened.descriptor < 0 )
        throw ReadError{ opened.reason };
    File file( fdopen( opened.descriptor, "rb" ), std::fclose );
    if( !file ) {
        close( opened.descriptor );
        throw ReadError{ std::strerror( ENOMEM ) };
    }
    return file;
}

String readFile( String const& path ) {
    File const file = openFile( path );
    String text;
    char buffer[ 65536 ];
    while( std::size_t const count = std::fread( buffer, 1, sizeof buffer, file.get() ) )
        text.append( buffer, count );
    if( std::ferror( file.get() ) )
        throw ReadError{ std::strerror( errno ) };
    return text;
}

char const* nameOf( JsonValue::Kind kind ) {
    switch( kind ) {
    case JsonValue::Kind::null:
        return "null";
    case JsonValue::Kind::boolean:
        return "a boolean";
    case JsonValue::Kind::number:
        return "a number";
    case JsonValue::Kind::string:
        return "a string";
    case JsonValue::Kind::array:
        return "an array";
    case JsonValue::Kind::object:
        return "an object";
    }
    return "a value";
}

JsonError mismatch( JsonValue const& value, String const& expected, String const& found = {} ) {
    String const reason = "expected " + expected + ( found.empty() ? "" : ", found " + found );
    return { value.offset, reason, expected, found };
}

/// Reads the profile out of the configuration's value. What is wrong is thrown as a JsonError.
class ProfileReader {
  public:
    explicit ProfileReader( String const& switchConf )
        : folder_( std::filesystem::path( switchConf ).parent_path() ) {}

    DeviceProfile profile( JsonValue const& root ) const {
        require( root, JsonValue::Kind::object, "the configuration" );
        DeviceProfile result;
        for( JsonValue const& item : listOf( root, "devices", 255 ) )
            result.devices.push_back( device( item ) );
        result.numDevices = static_cast<U8>( result.devices.size() );
        return result;
    }

  private:
    Device device( JsonValue const& value ) const {
        require( value, JsonValue::Kind::object, "a device" );
        Device result;
        if( value.member( "runtime_config" ) )
            result.runtimeConfig = path( value, "runtime_config" );
        for( JsonValue const& item : listOf( value, "pipelines", 255 ) )
            result.pipelines.push_back( pipeline( item ) );
        result.numPipelines = static_cast<U8>( result.pipelines.size() );
        return result;
    }

    Pipeline pipeline( JsonValue const& value ) const {
        require( value, JsonValue::Kind::object, "a pipeline" );
        Pipeline result;
        result.contextFile = path( value, "context_file" );
        for( JsonValue const& item : listOf( value, "pipes", 0x7FFFFFFF ) ) {
            if( !item.isUnsigned32 )
                throw mismatch( item, "a pipe to be an unsigned 32-bit number" );
            result.pipeScope.push_back( item.number );
        }
        result.numPipesInScope = static_cast<S32>( result.pipeScope.size() );
        return result;
    }

    String path( JsonValue const& value, char const* name ) const {
        String const& text = member( value, name, JsonValue::Kind::string ).text;
        return text.empty() ? text : ( folder_ / text ).string();
    }

    static std::vector<JsonValue> const& listOf( JsonValue const& value, char const* name,
                                                 std::size_t most ) {
        JsonValue const& list = member( value, name, JsonValue::Kind::array );
        if( list.items.size() > most )
            throw mismatch( list, "at most " + std::to_string( most ) + " " + name,
                            std::to_string( list.items.size() ) );
        return list.items;
    }

    static JsonValue const& member( JsonValue const& value, char const* name, JsonValue::Kind kind ) {
        JsonValue const* const found = value.member( name );
        String const quoted = String( 1, '"' ).append( name ).append( 1, '"' );
        if( !found )
            throw mismatch( value, "a member " + quoted );
        require( *found, kind, quoted );
        return *found;
    }

    static void require( JsonValue const& value, JsonValue::Kind kind, String const& what ) {
        if( value.kind != kind )
            throw mismatch( value, what + " to be " + nameOf( kind ), nameOf( value.kind ) );
    }

    std::filesystem::path folder_;
};

Status errorAt( String const& file, std::string_view text, JsonError const& error ) {
    std::string_view const before = text.substr( 0, error.offset );
    auto const lineStart = before.rfind( '\n' ); // npos + 1 is 0
    return { error.reason,
             file,
             static_cast<U32>( 1 + std::count( before.begin(), before.end(), '\n' ) ),
             static_cast<U32>( before.size() - ( lineStart + 1 ) + 1 ),
             error.expected,
             error.found };
}

Status readProfile( String const& switchConf, DeviceProfile& profile ) {
    String text;
    try {
        text = readFile( switchConf );
        profile = ProfileReader( switchConf ).profile( parseJson( text ) );
        return {};
    } catch( ReadError const& error ) {
        return { .reason = error.reason, .file = switchConf };
    } catch( JsonError const& error ) {
        return errorAt( switchConf, text, error );
    }
}

} // namespace

String Status::text() const {
    if( ok() )
        return {};
    String const place = line ? ":" + std::to_string( line ) + ":" + std::to_string( column ) : "";
    return file + place + ": " + reason;
}

OstlerContext* sdkContext() {
    static auto* const context = new OstlerContext;
    return context;
}

Status initializeDeviceProfileFromConfig( OstlerContext* context, char* /*installFolder*/, char* /*board*/,
                                          char* /*chip*/, char const* switchConf ) {
    context->profile = {};
    context->status = readProfile( switchConf, context->profile );
    return context->status;
}

} // namespace Ostler
