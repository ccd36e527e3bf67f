#include <ostler/Ostler.h>
#include <resourceinfo/BfResourceInfoIntf.h>

#include <iostream>

int main( int argc, char** argv ) {
    auto const info = BfResourceInfo::bfResourceInfoIntfFactory( argc > 1 ? argv[ 1 ] : "switch.conf" );
    if( Ostler::Status const& status = Ostler::sdkContext()->status; !status.ok() ) {
        std::cerr << status.text() << '\n';
        return 1;
    }
    for( U32 i = 0; i < info->bfTablesNum(); ++i ) {
        String const name = info->bfTableName( i );
        std::cout << name << ": " << info->bfTableField( name, BfResourceInfo::tableSize ) << " entries\n";
    }
}
