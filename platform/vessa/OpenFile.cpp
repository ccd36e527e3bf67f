#include "vessa/OpenFile.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace Vessa {

namespace {

String lastError() { return std::generic_category().message( errno ); }

/// Why an open file is refused; empty when it is not.
String objectionTo( int descriptor ) {
    struct stat status;
    if( fstat( descriptor, &status ) != 0 )
        return lastError();
    return S_ISREG( status.st_mode ) || S_ISDIR( status.st_mode ) ? "" : "Not a regular file";
}

} // namespace

OpenFile openRegularFile( String const& path ) {
    // Without O_NONBLOCK, opening a pipe waits for its writer.
    int const descriptor = open( path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC );
    if( descriptor < 0 )
        return { -1, lastError() };
    String const objection = objectionTo( descriptor );
    if( objection.empty() )
        return { descriptor, {} };
    close( descriptor );
    return { -1, objection };
}

} // namespace Vessa
