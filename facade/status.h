/** @file
 *  The façade's own status codes. Every other non-zero result is a toolkit's and passes through unchanged.
 */
#pragma once

namespace sigil {

enum Status : int {
    Success = 0,
    NoMemory = 1000,            ///< the handle could not be allocated
    MissingField = 1000,        ///< a certificate function without its output buffer or with an empty input
    InvalidArgument = 1001,     ///< a required argument is null or empty
    FunctionMissing = 1003,     ///< the bound toolkit has no such function
    NotInitialised = 1008,      ///< the handle is null or not initialised
    UnknownToolkit = 1020,      ///< the toolkit type is neither 0 nor 1
    NoLibraryFolder = 1021,     ///< the library folder is null or empty
    MakerLibraryMissing = 1023, ///< the maker toolkit's library is not loaded
    GpkiLibraryMissing = 1024,  ///< the GPKI library is not loaded
};

} // namespace sigil
