// How a call is set up, and where its destination may lie.
#pragma once

#include "members.h"
#include "operand.h"
#include "oracle.h"

struct Setting {
    int width; // the order of square matrices
    int height;
    int count;
    Layout src1;
    Layout src2;
    Layout dst;
    Memory memory = Memory::heap;
    int inPlace = 0;          // 1 or 2: the destination is that source
    bool difficult = false;   // matrices that fail or nearly fail are among the objects; sums of zeros
    int inner = 0;            // of a product of matrices, 0 for what follows from the shape
    bool fine = false;        // factors of sums have all bits of a double
    bool wild = false;        // any numbers but in matrices to be factored, NaN too
    std::uint64_t values = 0; // what all values come from, 0 for the shape alone
};

struct Size {
    int width, height;
};

// Whether what objects of the destination hold is told where they overlap one another, or elements of one coincide.
inline bool mayOverlap(const Member &member, Size size, int count)
{
    const bool isOnCopies = member.isTall() ? size.width <= 6 && size.height <= 64 : oracle::isUnrolled(size.width);
    const bool mayCoincide = !member.isProduct() && !member.isOf({"LoadIdentity", "Transpose"});
    return member.isArray() && (count > 1 || mayCoincide) && (!member.isNumerical() || (isOnCopies && count > 1));
}

// Whether the destination may be that source.
inline bool mayBeInPlace(const Member &member, const std::string &source, int number, Size size)
{
    std::string destination = source;
    destination[0] = static_cast<char>(std::toupper(source[0]));
    if ((source[0] != 'm' && source[0] != 'v') || !member.has(destination) ||
        member.description != member.dstDescription || member.isEigen() || member.family == "CrossProduct")
        return false;
    if (member.isMatrixProduct()) // in tables all of an object is read before any of it is stored
        return member.description == 'P' && size.width == size.height && oracle::isUnrolled(size.width);
    if (member.isProduct())
        return member.family == "AffineTransform3DH" || (member.family == "Gaxpy" && number == 3);
    return member.isTall() || member.isOf({"LUDecomp", "CholeskyDecomp", "CholeskyBackSubst"}) ||
           !member.isNumerical() || oracle::isUnrolled(size.width);
}
