#include "inspect/rows/JsonFormat.h"

#include "inspect/rows/Utf8.h"

namespace Bfri {

namespace {

using Writer = rapidjson::PrettyWriter<rapidjson::StringBuffer>;

void writeText( Writer& writer, std::string_view text ) {
    String const quoted = jsonQuoted( text );
    writer.RawValue( quoted.data(), quoted.size(), rapidjson::kStringType );
}

struct ValueWriter {
    Writer& writer;

    void operator()( std::monostate ) const { writer.Null(); }
    void operator()( bool flag ) const { writer.Bool( flag ); }
    void operator()( U32 number ) const { writer.Uint( number ); }
    void operator()( std::int64_t number ) const { writer.Int64( number ); }
    void operator()( Hex number ) const { writer.Uint( number.value ); }
    void operator()( String const& text ) const { writeText( writer, text ); }
    void operator()( List const& list ) const {
        writer.StartArray();
        for( Value const& value : list )
            std::visit( *this, value.is );
        writer.EndArray();
    }
    void operator()( Row const& row ) const {
        writer.StartObject();
        for( Field const& field : row )
            write( field.name, field.value );
        writer.EndObject();
    }
    void write( std::string_view name, Value const& value ) const {
        writeText( writer, name );
        std::visit( *this, value.is );
    }
};

} // namespace

JsonAnswer::JsonAnswer( std::ostream& out ) : out_( out ) {
    writer_.SetIndent( ' ', 2 );
    writer_.StartObject();
    member( "format", U32{ 1 } );
}

JsonAnswer::~JsonAnswer() {
    writer_.EndObject();
    flush();
    out_ << '\n';
}

void JsonAnswer::member( std::string_view name, Value const& value ) {
    ValueWriter{ writer_ }.write( name, value );
    flush();
}

void JsonAnswer::members( Row const& row ) {
    for( Field const& field : row )
        member( field.name, field.value );
}

void printJsonObject( std::ostream& out, Row const& row ) {
    rapidjson::StringBuffer buffer;
    Writer writer( buffer );
    writer.SetIndent( ' ', 2 );
    ValueWriter{ writer }( row );
    out.write( buffer.GetString(), static_cast<std::streamsize>( buffer.GetSize() ) ) << '\n';
}

void JsonAnswer::flush() {
    out_.write( buffer_.GetString(), static_cast<std::streamsize>( buffer_.GetSize() ) );
    buffer_.Clear();
}

} // namespace Bfri
