// nlohmann::json: the whole file in memory, which it parses faster than a stream, then a whole document.

#include "bench/load/Measure.h"
#include "bench/load/PullOut.h"

#include <fstream>

#include <nlohmann/json.hpp>

namespace {

using nlohmann::json;

struct Nlohmann {
    template<class Each>
    static void members( json const& value, Each each ) {
        for( auto const& [ name, member ] : value.get_ref<json::object_t const&>() )
            each( std::string_view( name ), member );
    }
    template<class Each>
    static void elements( json const& value, Each each ) {
        for( json const& element : value.get_ref<json::array_t const&>() )
            each( element );
    }
    static std::string_view text( json const& value ) { return value.get_ref<std::string const&>(); }
    static U32 number( json const& value ) { return value.get<U32>(); }
    static bool boolean( json const& value ) { return value.get<bool>(); }
};

String wholeFile( String const& path ) {
    std::ifstream file( path, std::ios::binary | std::ios::ate );
    String text( static_cast<std::size_t>( file.tellg() ), '\0' );
    file.seekg( 0 );
    file.read( text.data(), static_cast<std::streamsize>( text.size() ) );
    return text;
}

} // namespace

int main( int argc, char** argv ) {
    auto const load = []( Input const& input ) {
        json const document = json::parse( wholeFile( input.contextFile ) );
        return PullOut<Nlohmann>( input.contextFile )( document );
    };
    return measure( argc, argv, load, answerOf );
}
