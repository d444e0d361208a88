// SPDX-License-Identifier: MIT
#include <cstdio>
#include <cstdlib>

/**
 * What every pure virtual member in a table of virtual functions stands for. There are thousands of
 * them, in the tables of the client interfaces; each entry that means the compiler's own function,
 * of another library, is a relocation of 24 bytes, while those that stay inside this one are packed
 * to a tenth of a byte. A call of it is a fault of the library, as with the compiler's own.
 */
extern "C" [[noreturn]] void __cxa_pure_virtual();

extern "C" [[noreturn]] void __cxa_pure_virtual()
{
    std::fputs("libKWIFunctionZEL: pure virtual function called\n", stderr);
    std::abort();
}
