// RapidJSON as its manual shows it: a whole document out of a stream, with the default flags.

#include "bench/load/GzStream.h"
#include "bench/load/Measure.h"
#include "bench/load/PullOut.h"

#include <cstdio>
#include <memory>

#include <rapidjson/document.h>
#include <rapidjson/filereadstream.h>

namespace {

using rapidjson::Value;

struct RapidJson {
    template<class Each>
    static void members( Value const& value, Each each ) {
        for( auto const& member : value.GetObject() )
            each( text( member.name ), member.value );
    }
    template<class Each>
    static void elements( Value const& value, Each each ) {
        for( Value const& element : value.GetArray() )
            each( element );
    }
    static std::string_view text( Value const& value ) {
        return { value.GetString(), value.GetStringLength() };
    }
    static U32 number( Value const& value ) { return value.GetUint(); }
    static bool boolean( Value const& value ) { return value.GetBool(); }
};

char buffer[ 65536 ];

Model loadPlain( String const& path ) {
    std::unique_ptr<std::FILE, int ( * )( std::FILE* )> const file( std::fopen( path.c_str(), "rb" ),
                                                                    std::fclose );
    rapidjson::FileReadStream stream( file.get(), buffer, sizeof buffer );
    rapidjson::Document document;
    document.ParseStream( stream );
    return PullOut<RapidJson>( path )( document );
}

Model loadGzip( String const& path ) {
    GzStream stream( path, buffer );
    rapidjson::Document document;
    document.ParseStream( stream );
    return PullOut<RapidJson>( path )( document );
}

} // namespace

int main( int argc, char** argv ) {
    auto const load = []( Input const& input ) {
        return input.isGzip ? loadGzip( input.contextFile ) : loadPlain( input.contextFile );
    };
    return measure( argc, argv, load, answerOf );
}
