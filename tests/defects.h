// Defective arguments: which there are, and which check finds them.
#pragma once

#include "members.h"

#include <climits>
#include <map>

struct Defect {
    std::size_t position;
    int value;  // of an integer; a pointer becomes null
    char check; // the class of check that finds it
};

inline int statusOf(char check)
{
    static const std::map<char, int> statuses = {{'N', -8},   {'S', -6},   {'M', -204}, {'C', -203},
                                                 {'T', -182}, {'O', -182}, {'H', -202}};
    return statuses.at(check);
}

// Where in the member's order a defect of an argument is found.
inline std::size_t rank(const Member &member, const Arg &arg, char check)
{
    if (check == 'O' && member.order.find('O') == std::string::npos)
        check = 'T';
    std::size_t at = member.order.find(check);
    for (int k = 0; k < arg.round && at != std::string::npos; ++k)
        at = member.order.find(check, at + 1);
    return at;
}

inline std::vector<Defect> defectsOf(const Member &member, const Args &args)
{
    std::vector<Defect> defects;
    const int size = member.elementSize();
    for (std::size_t k = 0; k < args.size(); ++k) {
        if (member.name == "kvlmAdd_vaca_32f_P" && k == 2) // settled: its srcObjStride is not checked
            continue;
        const char check = args[k].check;
        const bool isStride = check == 'T' || check == 'O', isShift = check == 'H';
        std::vector<int> values = {0, -1, INT_MIN};
        if (isStride)
            values = {0, -size, INT_MIN, -1, INT_MAX};
        else if (isShift)
            values = {-size, INT_MIN, 1 - size, INT_MAX};
        for (int extra = 1; extra < size && (isStride || isShift); ++extra)
            values.push_back(size * isStride + extra);
        if (check != 'V' && rank(member, args[k], check) != std::string::npos)
            for (int value : values)
                defects.push_back({k, value, check});
        if (args[k].matched) // no two of them match again
            defects.push_back({k, args[k].number + 1 + static_cast<int>(k), 'M'});
    }
    if (member.isTall()) {
        const std::size_t height = args.size() - 1 - member.isArray(), width = height - 1;
        defects.push_back({width, args[height].number + 1, 'M'});
        if (args[width].number > 1)
            defects.push_back({height, args[width].number - 1, 'M'});
    }
    return defects;
}

inline void apply(const Defect &defect, Args &args)
{
    args[defect.position].number = defect.value;
    if (args[defect.position].check == 'N')
        args[defect.position].pointer = nullptr;
}
