#include "vessa/OpenFile.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace Vessa {

namespace {

String lastError() { return std::generic_category().message( errno ); }

} // namespace

OpenFile openRegularFile( String const& path ) {
    // Without O_NONBLOCK, opening a pipe waits for its writer.
    int const descriptor = open( path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC );
    if( descriptor < 0 )
        return { .reason = lastError() };
    struct stat status;
    String reason;
    if( fstat( descriptor, &status ) != 0 )
        reason = lastError();
    else if( S_ISREG( status.st_mode ) || S_ISDIR( status.st_mode ) )
        return { .descriptor = descriptor, .size = static_cast<U64>( status.st_size ) };
    else
        reason = "Not a regular file";
    close( descriptor );
    return { .reason = reason };
}

} // namespace Vessa
