#include "resourceinfo/parser/context/Phv.h"

#include "resourceinfo/model/Source.h"
#include "resourceinfo/parser/context/Signatures.h"
#include "zel/Assert.h"

#include <algorithm>
#include <map>

using BfResourceInfo::BfResourceParser;
using Context::Json;

namespace {

// Not temporaries: the note of the last access points to the text, and stays until the next one.
String const directions[] = { "ingress", "egress" };

/// Bits of each field in one stage and direction. The names are the document's.
using PhvSizes = std::map<std::string_view, U8>;

void addRecord( Json record, PhvSizes& perStagePhvSize ) {
    ZEL_ASSERT( record.IsObject() );
    if( record[ "is_pov" ].GetBool() )
        return;
    std::string_view const record_field_name = record[ "field_name" ].GetString();
    // Eight bits, as the containers' own tables keep it: a field of 32 bytes counts as none.
    U8 const width = static_cast<U8>( record[ "field_width" ].GetUint() * 8 );
    perStagePhvSize.try_emplace( record_field_name, width );
    ZEL_ASSERT( perStagePhvSize[ record_field_name ] == width );
}

PhvSizes stagePhvSizes( Json phvStage, String const& direction ) {
    Json const gress_info = phvStage[ Json::Member::named( direction.c_str() ) ];
    ZEL_ASSERT( gress_info.IsArray() );
    PhvSizes perStagePhvSize;
    for( Json const container : gress_info ) {
        Json const records = container[ "records" ];
        ZEL_ASSERT( records.IsArray() );
        for( Json const record : records )
            addRecord( record, perStagePhvSize );
    }
    return perStagePhvSize;
}

/// Whether a collection holds a field with that many bytes or more.
template<class Containers>
bool holds( Containers const& containers, String const& field, U8 byteCount ) {
    auto const found = containers.find( field );
    return found != containers.end() && found->value() >= byteCount;
}

} // namespace

void parsePhv( BfResourceParser* parser, Json d ) {
    Json const phvs = d[ "phv_allocation" ];
    ZEL_ASSERT( phvs.IsArray() );
    BF_TRACE( 6 ) << "Parsing PHV";
    for( Json const phvStage : phvs ) {
        ZEL_ASSERT( phvStage.IsObject() );
        for( String const& direction : directions )
            parsePhvStage( parser, phvStage, direction );
    }
}

int parsePhvStage( BfResourceParser* parser, Json phvStage, String const& direction ) {
    Zel::Operation const operation( Context::Signatures::parsePhvStage );
    for( auto const& [ name, width ] : stagePhvSizes( phvStage, direction ) ) {
        String const field( name );
        U8 const byteCount = static_cast<U8>( ( width + 7 ) / 8 );
        if( direction == "ingress" ) {
            if( !holds( parser->ingressPhvContainers(), field, byteCount ) )
                parser->ingressPhvContainersIs( field, byteCount );
        } else if( direction == "egress" ) {
            if( !holds( parser->egressPhvContainers(), field, byteCount ) )
                parser->egressPhvContainersIs( field, byteCount );
        } else {
            ZEL_ASSERT( false && "Invalid Direction" );
        }
    }
    return 0;
}

namespace {

void surveyPhvStage( Context::LooseJson gress_info, U32 element, bool ingress, Context::FileSurvey& file ) {
    using Kind = Context::TruncatedSize::Kind;
    std::map<String, U32> bytesOfFields;
    for( auto const& container : gress_info.elements() ) {
        for( auto const& value : Context::LooseJson( container )[ "records" ].elements() ) {
            Context::LooseJson const record( value );
            auto const bytes = record[ "field_width" ].unsignedNumber();
            if( record[ "is_pov" ].isFalse() && bytes ) {
                U32& most = bytesOfFields[ record[ "field_name" ].text() ];
                most = std::max( most, *bytes );
            }
        }
    }
    for( auto const& [ name, bytes ] : bytesOfFields ) {
        file.phvFields.push_back( { element, ingress, name, bytes } );
        if( bytes >= 32 )
            file.truncatedSizes.push_back(
                { ingress ? Kind::ingressPhv : Kind::egressPhv, element, name, bytes, bytes % 32 } );
    }
}

} // namespace

void surveyPhv( Context::LooseJson phvs, Context::FileSurvey& file ) {
    U32 element = 0;
    for( auto const& phvStage : phvs.elements() ) {
        surveyPhvStage( Context::LooseJson( phvStage )[ "ingress" ], element, true, file );
        surveyPhvStage( Context::LooseJson( phvStage )[ "egress" ], element, false, file );
        ++element;
    }
}
