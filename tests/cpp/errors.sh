#!/usr/bin/env bash
# Checks what is refused at compile time: each wrong line gives exactly one error, with a text that tells what is wrong.
# usage: errors.sh <folder of kvlm.hpp in the tree> <C++ compiler and flags>
set -euo pipefail
read -ra compiler <<<"$2"
options=(-std=c++17 -Werror=unused-result -fsyntax-only "-I$1" "-I$1/../../kvlcore/include" -x c++ -)

# compiled LINE: compiles it among views of all kinds.
compiled() {
    "${compiler[@]}" "${options[@]}" 2>&1 <<CPP
#include <kvlm.hpp>
#include <vector>
using namespace kvlm;
float numbers[400];
double doubles[400];
const float fixedNumbers[400] = {};
float *pointers[20];
int ints[20];
const auto m33 = matrix(numbers, fixed<3>, fixed<3>);
const auto m34 = matrix(numbers, fixed<3>, fixed<4>);
const auto ma = matrices(numbers, fixed<3>, fixed<3>, 4);
const auto ofDoubles = matrices(doubles, fixed<3>, fixed<3>, 4);
const auto ofConst = matrices(fixedNumbers, fixed<3>, fixed<3>, 4);
const auto planes = matricesByTable(pointers, 3, 3, 4, 4);
const auto list = matricesByList(pointers, 3, 3, 4);
const auto v = vector(numbers, fixed<3>);
const auto v4 = vector(numbers, fixed<4>);
const auto va = vectors(numbers, fixed<3>, 4);
std::vector<std::vector<float>> scattered;
Workspace workspace;
Status status = kvlOk;
int main()
{
    $1
}
CPP
}

# refused TEXT LINE
refused() {
    local output errors
    if output=$(compiled "$2"); then
        echo "FAILED  this compiles: $2" && exit 1
    fi
    errors=$(grep -E '(^|[ :])error:' <<<"$output") || true
    if [[ $(wc -l <<<"$errors") != 1 || $errors != *"$1"* ]]; then
        printf 'FAILED  %s\nwants one error: %s\ngot:\n%s\n' "$2" "$1" "$output" && exit 1
    fi
    echo "ok      $2"
}

compiled 'status = add(ma, m33, ma);' || { echo "FAILED  what is right doesn't compile"; exit 1; }
refused 'no C function for this operation' 'status = add(m33, 2.0f, m33);'
refused 'no C function for this operation' 'status = determinant(transposed(ma), numbers, workspace);'
refused 'no C function for this operation' 'status = affineTransform3DH(matrix(doubles, 4, 4), vectors(doubles, 3, 4), vectors(doubles, 3, 4));'
refused 'no C function for this operation' 'status = luSolve(ma, ints, v, va);'
refused 'an operand is no view' 'status = add(numbers, numbers, va);'
refused 'an operand is no view' 'status = gaxpy(m33, scattered, v, v);'
refused 'of different types' 'status = add(ma, ofDoubles, ma);'
refused 'the destination are const' 'status = add(ma, ma, ofConst);'
refused 'the destination are const' 'status = copy(ma, ofConst);'
refused 'have one description' 'status = add(ma, planes, ma);'
refused 'have one description' 'status = multiply(m33, planes, planes);'
refused 'have one description' 'status = add(list, list, ma);'
refused 'the destination must be' 'status = add(ma, ma, m33);'
refused 'the destination must be' 'status = add(ma, ma, transposed(ma));'
refused 'the destination must be' 'status = multiply(ma, va, ma);'
refused 'sizes of the operands do not fit' 'status = add(m33, m34, m33);'
refused 'sizes of the operands do not fit' 'status = multiply(m34, v, v);'
refused 'sizes of the operands do not fit' 'status = trace(m34, numbers);'
refused 'sizes of the operands do not fit' 'status = cross(v4, v4, v4);'
refused 'copy() is from an array' 'status = copy(m33, m33);'
refused 'objects must hold their elements' 'vectors(scattered);'
refused 'an element has an index' 'numbers[0] = ma(0, 0);'
refused 'no matrix: give' 'matrix(numbers);'
refused 'no vector: give' 'vector(scattered);'
refused 'nodiscard' 'add(ma, ma, ma);'
