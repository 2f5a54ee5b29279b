// Every exported function is called by its name, and does what the plain loop of its member does: public functions,
// drivers, kernels, and the routines for some orders, of which not all are called by the library.
#include "problem.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <set>
#include <utility>

namespace {

using Address = void (*)();

Address addressOf(const std::string &name)
{
    return reinterpret_cast<Address>(dlsym(RTLD_DEFAULT, name.c_str()));
}

// Calls what has no prototype here, as compilers for both ABIs make a call: a word for each integer and pointer; a
// constant has words of its own on i386, a register of its own on x86_64. Words too many are not looked at.
template <class T, std::size_t... I>
KvlStatus callWords(Address address, const std::intptr_t *words, const T *constants, std::index_sequence<I...>)
{
    using F = KvlStatus(decltype(I, std::intptr_t())..., T, T);
    return reinterpret_cast<F *>(address)(words[I]..., constants[0], constants[1]);
}

template <class T>
KvlStatus callUntyped(Address address, const Args &args)
{
    constexpr std::size_t most = 24;
    std::intptr_t words[most] = {};
    T constants[2] = {};
    std::size_t n = 0, constant = 0;
    for (const Arg &arg : args) {
        require(n + 2 <= most && constant < 2u + (arg.check != 'V'), "an argument list too long");
        const T value = static_cast<T>(arg.value);
        if (arg.check == 'N')
            words[n++] = reinterpret_cast<std::intptr_t>(arg.pointer);
        else if (arg.check != 'V')
            words[n++] = arg.number;
        else if (sizeof(void *) == 8)
            constants[constant++] = value;
        else {
            std::memcpy(words + n, &value, sizeof(T));
            n += sizeof(T) / sizeof(void *);
        }
    }
    return callWords<T>(address, words, constants, std::make_index_sequence<most>());
}

// What a name tells of a function: ownkvlm..., ownOMP_kvlm..., ownm..., a6_..., then the member, then what is here the
// suffix, as in ownkvlmLUDecomp_m_32f_S2_com.
struct Export {
    explicit Export(const std::string &name) : name(name), isKernel(name.find("own") == 0 && name.find("ownOMP_") != 0)
    {
        std::string rest = name;
        for (const char *prefix : {"ownOMP_", "own", "a6_", "m", "kvlm"})
            if (rest.find(prefix) == 0)
                rest.erase(0, std::strlen(prefix));
        rest = "kvlm" + rest;
        for (const Member &candidate : members())
            if (rest.find(candidate.name) == 0 && (!member || candidate.name.size() > member->name.size()))
                member = &candidate;
        suffix = member ? rest.substr(member->name.size()) : "";
        const std::size_t by = suffix.find('x');
        order = by == std::string::npos ? 0 : suffix[by - 1] - '0';
    }
    bool has(const char *part) const { return suffix.find(part) != std::string::npos; }
    // Kernels of adjacent elements, beside which there is one for all others.
    bool isPlain(const std::set<std::string> &names) const
    {
        const bool isList = member->description == 'L';
        return isKernel && member->description != 'P' && !has("S2") &&
               names.count("own" + member->name + (isList ? "S2" : "_S2"));
    }
    // Common routines are for the orders that are not unrolled; order 1 has its own.
    bool takes(Size size, bool isPlain, bool isStrided) const
    {
        const bool isSquare = size.width == size.height;
        return member && !member->isOddAt(size.width, size.height, innerOf(size.width, size.height)) &&
               (isSquare || !member->isSquare()) && (!member->hasFixedSize() || (isSquare && size.width == 3)) &&
               (!order || (isSquare && size.width == order)) &&
               (!has("com") || (size.width > 1 && !oracle::isUnrolled(size.width))) &&
               !(isStrided ? isPlain || order : isKernel && has("S2") && !order);
    }

    std::string name, suffix;
    bool isKernel;
    const Member *member = nullptr;
    int order; // or 0 for any
};

template <class T>
std::string wrongOf(const Export &function, bool isPlain, const Setting &setting)
{
    const Member &member = *function.member;
    Problem<T> problem(member, setting, 1);
    Args args;
    for (const Arg &arg : problem.args)
        if (!(arg.role == 'e' && (isPlain || function.order)) &&
            !((arg.check == 'S' || arg.role == 'b') && function.order))
            args.push_back(arg);
    running() = function.name + " as " + problem.name();
    return problem.verdict(callUntyped<T>(addressOf(function.name), args), 0, member.isArray() ? setting.count : 1);
}

// Those that are no member's, or compute something of their own: their tests.
const std::map<std::string, std::string> others = {
    {"kvlmGetLibVersion", "Identity.VersionRecord"},
    {"kvlmEigenValuesGetBufSize_32f", "GeneralEigen.SizesOfScratch"},
    {"kvlmEigenValuesGetBufSize_64f", "GeneralEigen.SizesOfScratch"},
    {"kvlmEigenValuesVectorsGetBufSize_32f", "GeneralEigen.SizesOfScratch"},
    {"kvlmEigenValuesVectorsGetBufSize_64f", "GeneralEigen.SizesOfScratch"},
    {"ownkvlmMul_mac_32f_P_ASM", "Products.ScalingKernelOfTables"},
    {"ownkvlmSaxpy_vav_32f_4", "Vectors.Streams"},
    {"ownkvlmSaxpy_vav_32f_12", "Vectors.Streams"},
    {"ownkvlmSaxpy_vav_64f_6", "Vectors.Streams"},
    {"ownkvlmSaxpy_vva_32f_4", "Vectors.Streams"},
    {"ownkvlmSaxpy_vva_32f_12", "Vectors.Streams"},
    {"ownkvlmSaxpy_vva_64f_6", "Vectors.Streams"},
    {"owniTranspose_32s_asm", "Routines.AnyShapeAtAnyAddress of stream_tests"},
    {"owniTranspose_32s_NT", "Routines.AnyShapeAtAnyAddress of stream_tests"},
    {"ownm_iTranspose_16u_C4R_W7", "Routines.AnyShapeAtAnyAddress of stream_tests"},
    {"ownm_Transpose_32s", "Streaming.OfOneMatrix of stream_tests"}};

TEST(Exports, EachIsCalled)
{
    std::set<std::string> names;
    std::ifstream file(KVLM_EXPORTS);
    for (std::string name; std::getline(file, name);)
        if (addressOf(name)) // those of families that were not built are null
            names.insert(name);
    EXPECT_FALSE(names.empty());
    const Size sizes[] = {{1, 1}, {2, 2}, {3, 3}, {4, 4}, {5, 5}, {6, 6}, {7, 7}, {3, 5}};
    for (const std::string &name : names) {
        if (others.count(name))
            continue;
        const Export function(name);
        int calls = 0;
        const bool isPlain = function.member && function.isPlain(names);
        for (const Size &size : sizes)
            for (Layout layout : {Layout::packed, Layout::gaps, Layout::strided})
                if (function.takes(size, isPlain, layout == Layout::strided)) {
                    Setting setting = {size.width, size.height, 5, layout, layout, layout};
                    setting.difficult = layout == Layout::gaps;
                    withType(*function.member, [&](auto zero) {
                        EXPECT_EQ(wrongOf<decltype(zero)>(function, isPlain, setting), "") << name;
                    });
                    ++calls;
                }
        EXPECT_GT(calls, 0) << name << " is called by no test";
    }
}

} // namespace
