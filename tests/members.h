// The members under test: the rows of their table, and what their names tell.
#pragma once

#include "call.h"

#include <algorithm>

// A public function and what is expected of its frame. Its arguments, one entry each: m, t, v or c a source, M or V the
// destination, X one with the source's columns as rows, each with `a` for an array; E a destination packed without
// strides; p pivots that are read, P that are written; b the buffer; D a plain result for each object, e a run of n of
// them; w, h, l, n sizes of the result, x, y, z the width, height or length of the source before; k the count.
// Estimates at or above the limit go to the driver.
struct Member {
    std::string name;
    Function call;
    Function driver;
    std::string family;
    std::string letters;
    std::vector<std::string> operands;
    bool is64;
    char description; // S, P or L
    std::string order;
    unsigned (*work)(unsigned width, unsigned height, unsigned count);
    int contiguousLimit;
    int stridedLimit;
    char dstDescription;
    bool neverDriven = false; // settled of a few: their driver is not called

    int elementSize() const { return is64 ? 8 : 4; }
    int estimate(int width, int height, int count) const { return static_cast<int>(work(width, height, count)); }
    bool isArray() const { return has("k"); }
    bool has(const std::string &operand) const
    {
        return std::find(operands.begin(), operands.end(), operand) != operands.end();
    }
    bool isOf(std::initializer_list<const char *> families) const
    {
        return std::find(families.begin(), families.end(), family) != families.end();
    }
    bool isSum() const { return isOf({"Add", "Sub"}); }
    bool isMove() const { return isOf({"Copy", "Extract", "LoadIdentity", "Transpose"}); }
    bool isSquare() const { return has("n"); }
    bool isTall() const { return family.find("QR") == 0; } // width is at most height
    bool isNumerical() const { return (isSquare() && family != "Trace") || isTall(); }
    bool isEigen() const { return family.find("Eigen") == 0; }
    bool isGeneralEigen() const { return isEigen() && family.find("Sym") == std::string::npos; }
    // Sums of products: the sizes of the sources are arguments of their own.
    bool isProduct() const { return has("x") || family == "AffineTransform3DH"; }
    bool isMatrixProduct() const { return has("x") && !has("z"); }
    bool isVector() const { return has("l"); }
    // A constant before a vector, and what is computed of vectors or of all elements of a matrix.
    bool isConstantFirst() const { return letters[0] == 'c'; }
    bool isTurned() const { return has("t") || has("ta"); }
    bool isMeasure() const { return isOf({"DotProduct", "L2Norm", "FrobNorm", "Trace"}); }
    bool isVectorAlgebra() const { return isMeasure() || isOf({"CrossProduct", "Saxpy", "LComb"}); }
    bool hasFixedSize() const { return isOf({"CrossProduct", "AffineTransform3DH"}); }
    // Shapes that make a settled oddity touch more than the operands: these have tests of their own.
    bool isOddAt(int width, int height, int inner) const
    {
        if (name == "kvlmMul_mm_32f_P" || name == "kvlmMul_tt_64f_P")
            return (width | height | inner) == 3 && (width != 3 || height != 3 || inner != 3);
        return name == "kvlmMul_mat_32f" && height == 4 && inner == 4 && width == 3;
    }
};

const std::vector<Member> &members();

// The inner size of a product of matrices whose result has this shape.
inline int innerOf(int width, int height)
{
    return width == height ? width : 1 + (7 * width + 3 * height) % 8;
}

// Calls body with a zero of the member's element type.
template <class Body>
void withType(const Member &member, Body body)
{
    if (member.is64)
        body(double());
    else
        body(float());
}
