#include "fuzz/Load.h"

#include "fuzz/Target.h"
#include "zel/Assert.h"
#include "zel/Trace.h"

namespace {

using BfResourceInfo::BfResourceInfoIntf;
using BfResourceInfo::BfResourceParser;

/// Asks for every record of a kind by index, and for its index by name.
template<class Record>
void describe( String& words, BfResourceInfoIntf const& info, U32 ( BfResourceInfoIntf::*num )() const,
               U32 ( BfResourceInfoIntf::*indexOf )( String const& ) const,
               Record ( BfResourceInfoIntf::*at )( U32 ) const ) {
    U32 const count = ( info.*num )();
    words += std::to_string( count ) + ":";
    for( U32 i = 0; i < count; ++i ) {
        Record const record = ( info.*at )( i );
        U32 const first = ( info.*indexOf )( record.name );
        require( first <= i && ( info.*at )( first ).name == record.name, "index of another name" );
        words += " " + record.name + " " + std::to_string( record.handle );
    }
    words += "\n";
}

void askTables( BfResourceInfoIntf const& info ) {
    for( U32 i = 0; i < info.bfTablesNum(); ++i ) {
        BfTableInfo const table = info.bfTable( i );
        require( info.bfTableByHandle( table.handle ).handle == table.handle, "table of another handle" );
        for( U32 field = 0; field <= BfResourceInfo::tableSelHandle; ++field )
            info.bfTableField( table.name, static_cast<BfResourceInfo::BfTableFieldId>( field ) );
        for( U32 text = 0; text <= BfResourceInfo::tableLogicalPipe; ++text )
            info.bfTableString( table.name, static_cast<BfResourceInfo::BfTableStringId>( text ) );
    }
}

void askAssociatedTables( BfResourceInfoIntf& info ) {
    for( U32 i = 0; i < info.bfTableMetersNum(); ++i )
        info.bfAssociatedTable( info.bfTableMeter( i ).name );
    for( U32 i = 0; i < info.bfTableCountersNum(); ++i )
        info.bfAssociatedTable( info.bfTableCounter( i ).name );
}

void askByName( String& words, BfResourceInfoIntf& info ) {
    BfResourceParser const& parser = *info.parser();
    for( auto const& [ name, header ] : parser.bfHeaders() )
        require( info.bfHeaderSize( name ) == header.size(), "size of another header" );
    for( auto const& [ name, hash ] : parser.bfDynamicHashInfo() ) {
        require( info.bfDynHashFieldCount( name ) == hash.fieldNames.size(),
                 "count that is not of the fields" );
        for( String const& field : hash.fieldNames )
            require( info.bfDynHashFieldId( name, field ) < hash.fieldCount, "field that is not found" );
    }
    for( std::size_t const count :
         { parser.bfHeaders().size(), parser.bfDynamicHashInfo().size(), parser.resourceHandles().size(),
           parser.ingressPhvContainers().size(), parser.egressPhvContainers().size() } )
        words += std::to_string( count ) + " ";
}

String describe( BfResourceInfoIntf& info ) {
    using I = BfResourceInfoIntf;
    String words;
    describe( words, info, &I::bfResourcesNum, &I::bfResourceIndex, &I::bfResource );
    describe( words, info, &I::bfTablesNum, &I::bfTableIndex, &I::bfTable );
    describe( words, info, &I::bfTableCountersNum, &I::bfTableCounterIndex, &I::bfTableCounter );
    describe( words, info, &I::bfTableMetersNum, &I::bfTableMeterIndex, &I::bfTableMeter );
    describe( words, info, &I::bfTableWredNum, &I::bfTableWredIndex, &I::bfTableWred );
    describe( words, info, &I::bfRegistersNum, &I::bfRegisterIndex, &I::bfRegister );
    describe( words, info, &I::bfLearnQuantasNum, &I::bfLearnQuantaIndex, &I::bfLearnQuanta );
    describe( words, info, &I::bfActionsNum, &I::bfActionIndex, &I::bfAction );
    askTables( info );
    askAssociatedTables( info );
    askByName( words, info );
    return words;
}

/// Bad data is met while the parser reads, so the failure is of it and of a place in a file.
String describe( Zel::AssertionFailure const& failure ) {
    require( failure.source == "BfResourceParser", "failure of another source" );
    require( failure.position.starts_with( "context file " ) ||
                 failure.position.starts_with( "switch configuration " ),
             "failure without a place" );
    return Zel::toText( failure );
}

String outcome( String const& switchConf, ModelCheck check ) {
    Zel::Ptr<BfResourceInfoIntf> info;
    try {
        info = BfResourceInfo::bfResourceInfoIntfFactory( switchConf );
    } catch( Zel::AssertionError const& error ) {
        return describe( error.failure() );
    }
    if( check )
        check( *info->parser() );
    return describe( *info ); // an assertion error here is a finding
}

} // namespace

String load( String const& switchConf, ModelCheck check ) {
    static auto const quiet = Zel::traceSinkIs( []( Zel::TraceLine const& ) {} );
    Zel::assertionHandlerIs( Zel::throwAssertionError );
    String words = outcome( switchConf, check );
    require( Vessa::allocationTracker<BfResourceInfoIntf>().live() == 0 &&
                 Vessa::allocationTracker<BfResourceParser>().live() == 0 &&
                 Vessa::allocationTracker<BfTableInfo>().live() == 0,
             "something outlived the interface" );
    return words;
}
