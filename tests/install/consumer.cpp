// Succeeds when the library that it links reads the example switch and answers.

#include <resourceinfo/BfResourceInfoIntf.h>

#include <iostream>

int main( int argc, char** argv ) {
    if( argc != 2 )
        return 2;
    auto const info = BfResourceInfo::bfResourceInfoIntfFactory( argv[ 1 ] );
    if( info->bfTablesNum() == 0 )
        return 1;
    String const name = info->bfTableName( 0 );
    bool const same = info->bfTableField( name, BfResourceInfo::tableHandle ) == info->bfTable( 0 ).handle;
    std::cout << info->bfTablesNum() << " tables, the first is " << name << '\n';
    return same ? 0 : 1;
}
