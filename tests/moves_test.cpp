// Moves of elements on operands that overlap in every way, against plain loops over memory, and what no table of
// members tells: strides that single objects do not have, sizes that wrap, a batch around all descriptions.
#include "problem.h"

#include <gtest/gtest.h>

#include <climits>

namespace {

using Bytes = std::vector<unsigned char>;

// The shape of a move: of what it writes, but with the rows of a Transpose's source.
struct Extent {
    int width, height, count;
};

// An operand anywhere in a small memory that it shares with the others, now and then about where another ends: where
// its elements begin, and its arguments.
struct Anywhere {
    Anywhere(const Member &member, char form, int rows, int columns, int count, Bytes &memory, Random &random,
             const Anywhere *neighbour = nullptr)
        : columns(columns), positions(rows * columns)
    {
        const int size = member.elementSize(), objects = member.isArray() ? count : 1;
        const auto some = [&] { return size * (1 + random.below(random.below(4) ? 3 : 12)); };
        int elem = random.below(2) ? size : some();
        int row = random.below(3) ? columns * elem : random.below(2) ? size : some();
        int obj = random.below(3) ? rows * row : random.below(2) ? size : some();
        if (random.below(4) == 0) { // side by side
            obj = size;
            elem = objects * size;
            row = columns * elem;
        }
        if ((objects - 1) * obj + (rows - 1) * row + columns * elem + 64 > static_cast<int>(memory.size())) {
            elem = size;
            row = columns * size;
            obj = rows * row;
        }
        const auto offset = [&](int i, int p) { return i * obj + p / columns * row + p % columns * elem; };
        const int last = offset(objects - 1, positions - 1), room = static_cast<int>(memory.size()) - size - last;
        const auto place = [&] { return 4 * random.below(room / 4); };
        int start = place();
        if (neighbour && random.below(3) == 0) {
            const auto [least, most] = std::minmax_element(neighbour->offsets.begin(), neighbour->offsets.end());
            const int end = random.below(2) ? *most : *least - last;
            start = std::min(std::max(0, end + size * (random.below(3) - 1)), room - 4);
        }
        const bool regular = random.below(3);
        std::vector<int> position(positions), object(objects);
        for (int p = 0; p < positions; ++p)
            position[p] = regular                     ? offset(0, p)
                          : p > 0 && !random.below(4) ? position[random.below(p)]
                                                      : place() - start;
        for (int i = 0; i < objects; ++i)
            object[i] = regular || form != 'L' ? i * obj : place() - start;
        for (int i = 0; i < objects; ++i)
            for (int p = 0; p < positions; ++p)
                offsets.push_back(start + object[i] + (form == 'P' ? position[p] : offset(0, p)));
        adjacent = elem == size;

        const int shift = form == 'S' ? 0 : 8 * random.below(3);
        for (int entry : form == 'P' ? position : object)
            table.push_back(memory.data() + start + entry - shift);
        args = form == 'S' ? argsOf(memory.data() + start) : argsOf(table.data(), Arg::integer('H', shift));
        if (member.isArray() && form != 'L')
            append(args, Arg::integer('O', obj));
        if (form != 'P' && !member.isVector())
            append(args, row);
        if (form != 'P')
            append(args, elem);
    }
    // Becomes the buffer that elements are extracted into.
    void becomePacked(int start, int size, Bytes &memory)
    {
        args = argsOf(memory.data() + start);
        for (std::size_t k = 0; k < offsets.size(); ++k)
            offsets[k] = start + static_cast<int>(k) * size;
    }
    int at(int i, int r, int c) const { return offsets[i * positions + r * columns + c]; }

    int columns, positions;
    bool adjacent = false;
    std::vector<int> offsets;
    std::vector<const void *> table;
    Args args;
};

// The arguments of a move.
Args argsOfMove(const Member &member, const Args &src, const Args &dst, Extent n)
{
    const Args shape = member.isVector() ? argsOf(n.width) : argsOf(n.width, n.height);
    Args args = member.family == "LoadIdentity" ? dst
                : member.family == "Transpose"  ? argsOf(src, shape, dst)
                                                : argsOf(src, dst);
    if (member.family != "Transpose")
        append(args, shape);
    if (member.isArray())
        append(args, n.count);
    return args;
}

// The memory after single elements have been moved in the order of the member.
void moveInOrder(const Member &member, Bytes &memory, const Anywhere &src, const Anywhere &dst, Extent n)
{
    const int size = member.elementSize();
    const bool isTable = member.description == 'P', transposes = member.family == "Transpose";
    const auto move = [&](int to, int from) {
        unsigned char element[8];
        std::copy_n(&memory[from], size, element);
        std::copy_n(element, size, &memory[to]);
    };
    if (member.family == "Extract" && isTable && !member.isTurned()) {
        for (int p = 0; p < n.width * n.height; ++p)
            for (int i = 0; i < n.count; ++i)
                move(dst.at(i, 0, p), src.at(i, 0, p));
        return;
    }
    const bool unrolled = n.width == n.height && oracle::isUnrolled(n.width);
    for (int i = 0; i < n.count; ++i)
        if (member.family == "LoadIdentity")
            for (int r = 0; r < n.height; ++r) {
                for (int c = 0; c < n.width; ++c)
                    std::fill_n(&memory[dst.at(i, r, c)], size, 0);
                if (r < n.width)
                    withType(member, [&](auto one) { std::memcpy(&memory[dst.at(i, r, r)], &++one, size); });
            }
        else if (transposes && !(isTable && !unrolled))
            for (int k = 0; k < n.width * n.height; ++k)
                move(dst.at(i, k / n.height, k % n.height), src.at(i, k % n.height, k / n.height));
        else
            for (int k = 0; k < n.width * n.height; ++k) {
                const int r = k / n.width, c = k % n.width;
                move(transposes ? dst.at(i, c, r) : dst.at(i, r, c),
                     member.isTurned() ? src.at(i, c, r) : src.at(i, r, c));
            }
}

TEST(Moves, OperandsThatOverlapAnyhow)
{
    for (const Member &member : members()) {
        const int size = member.elementSize();
        bool right = true;
        for (int turn = 0; turn < 500 && member.isMove() && right; ++turn) {
            Random random(turn);
            const bool large = turn % 25 == 24; // more than is moved at a time
            const int width = 1 + random.below(large ? 40 : 7);
            const int height = member.isVector() ? 1 : random.below(2) && !large ? width : 1 + random.below(7);
            const int count = member.isArray() ? 1 + random.below(large ? 80 : 10) : 1;
            Bytes memory(large ? 200000 : 4096 + 8192 * random.below(2));
            for (std::size_t k = 0; k < memory.size(); k += 8) {
                const std::uint64_t word = random.next();
                std::memcpy(&memory[k], &word, 8);
            }
            const bool turned = member.isTurned(), transposes = member.family == "Transpose";
            Anywhere src(member, member.description, turned ? width : height, turned ? height : width, count, memory,
                         random);
            Anywhere dst(member, member.dstDescription, transposes ? width : height, transposes ? height : width, count,
                         memory, random, &src);
            if (transposes && member.description != 'P' && src.adjacent && dst.adjacent)
                continue; // must not overlap
            if (member.family == "Extract") {
                const int room = static_cast<int>(memory.size()) - count * width * height * size;
                const int end =
                    *std::max_element(src.offsets.begin(), src.offsets.end()) + size * (random.below(3) - 1);
                dst.becomePacked(random.below(3) && end >= 0 && end < room ? end : 4 * random.below(room / 4), size,
                                 memory);
            }
            Bytes expected = memory;
            moveInOrder(member, expected, src, dst, {width, height, count});
            const std::vector<const void *> tables[] = {src.table, dst.table};
            EXPECT_EQ(member.call(argsOfMove(member, src.args, dst.args, {width, height, count})), kvlOk);
            right = memory == expected && tables[0] == src.table && tables[1] == dst.table;
            EXPECT_TRUE(right) << member.name << " " << width << "x" << height << " count " << count << " turn "
                               << turn;
        }
    }
}

// Two doubles of a table that begin 4 bytes from each other: the second overwrites half of the first.
TEST(Moves, EntriesHalfAnElementApart)
{
    Bytes memory(256, 0x5a), expected = memory;
    const auto at = [&](int offset) { return reinterpret_cast<double *>(&memory[offset]); };
    double *const table[] = {at(0), at(4)};
    const double one = 1;
    for (int object : {0, 64}) {
        std::fill_n(&expected[object], 4 + sizeof(double), 0);
        std::memcpy(&expected[object], &one, sizeof one);
    }
    EXPECT_EQ(kvlmLoadIdentity_ma_64f_P(table, 0, 64, 2, 1, 2), kvlOk);
    EXPECT_EQ(memory, expected);
}

#ifndef __x86_64__
// Rows whose stride goes around the address space: the destination lies between the first and the last of them.
TEST(Moves, StridesAroundTheAddressSpace)
{
    constexpr std::uint32_t first = 0x10000000, stride = 0x60000000, width = 16, height = 4;
    for (std::uint32_t r = 0; r < height; ++r) {
        void *const place = reinterpret_cast<void *>(first + r * stride);
        if (mmap(place, 8192, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED_NOREPLACE, -1, 0) !=
            place) {
            while (r-- > 0)
                munmap(reinterpret_cast<void *>(first + r * stride), 8192);
            GTEST_SKIP() << "these addresses are taken";
        }
    }
    const auto row = [&](std::uint32_t r) { return reinterpret_cast<float *>(first + r * stride) + 256; };
    for (std::uint32_t r = 0; r < height; ++r)
        for (std::uint32_t c = 0; c < 2 * width; ++c)
            row(r)[c] = static_cast<float>(100 * r + c);
    // A packed object whose second row is the source's, one element on, and whose first row ends where that begins.
    float *const dst = row(1) + 1 - width;
    EXPECT_EQ(kvlmCopy_ma_32f_SS(row(0), 4, stride, 4, dst, 4, 4 * width, 4, width, height, 1), kvlOk);
    for (std::uint32_t r = 0; r < height; ++r)
        for (std::uint32_t c = 0; c < width; ++c)
            EXPECT_EQ(dst[r * width + c], r == 1 ? width - 1 : static_cast<float>(100 * r + c)) << r << ", " << c;
    for (std::uint32_t r = 0; r < height; ++r)
        munmap(reinterpret_cast<void *>(first + r * stride), 8192);
}
#endif

// Batches of more objects than are moved at a time.
TEST(Moves, LongBatches)
{
    for (const Member &member : members())
        for (int turn = 0; turn < 24 && member.isMove() && member.isArray(); ++turn) {
            const Layout layouts[] = {Layout::packed, Layout::interleaved, Layout::gaps, Layout::columnMajor};
            const int counts[] = {33, 66, 131}, size = turn % 5 + 2;
            withType(member, [&](auto zero) {
                const Setting setting = {size,           turn % 2 ? size : 3,  counts[turn % 3], layouts[turn % 4],
                                         Layout::packed, layouts[turn / 4 % 4]};
                EXPECT_EQ(Problem<decltype(zero)>(member, setting, turn).run(), "");
            });
        }
}

// A single object needs no object stride: nothing is asked of it.
TEST(Moves, ObjectStrideOfASingleObject)
{
    int tried = 0;
    for (const Member &member : members())
        for (int stride : {0, -1, 3, INT_MIN}) {
            if (member.order.find('O') == std::string::npos)
                continue;
            Random random(1);
            Bytes memory(1024, 0xa5), expected = memory;
            const Anywhere src(member, member.description, 1, 3, 1, memory, random);
            const Anywhere dst(member, member.dstDescription, 1, 3, 1, memory, random);
            Args args = argsOfMove(member, src.args, dst.args, {3, 1, 1});
            for (Arg &arg : args)
                if (arg.check == 'O') {
                    arg.number = stride;
                    ++tried;
                }
            moveInOrder(member, expected, src, dst, {3, 1, 1});
            EXPECT_EQ(member.call(args), kvlOk) << member.name;
            EXPECT_EQ(memory, expected) << member.name;
        }
    EXPECT_GT(tried, 100);
}

// The positions are counted in 32 bits.
TEST(Moves, ExtractOfPositionsThatWrap)
{
    constexpr int left = 131073; // of 65537 * 65537
    const float element = 7;
    std::vector<const float *> table(left, &element);
    std::vector<float> buffer(2 * left + 1, -1);
    for (const auto &[width, height] : {std::pair(65536, 65536), std::pair(65536, 32768), std::pair(INT_MAX, 2)}) {
        EXPECT_EQ(kvlmExtract_m_32f_P(table.data(), 0, buffer.data(), width, height), kvlOk);
        EXPECT_EQ(kvlmExtract_ma_32f_P(table.data(), 0, 4, buffer.data(), width, height, 2), kvlOk);
        EXPECT_EQ(buffer, std::vector<float>(2 * left + 1, -1));
    }
    EXPECT_EQ(kvlmExtract_m_32f_P(table.data(), 0, buffer.data(), 65537, 65537), kvlOk);
    EXPECT_EQ(std::count(buffer.begin(), buffer.end(), 7.0f), left);
    EXPECT_EQ(buffer[left - 1], 7);
    const float pair[] = {7, 8};
    table.assign(left, pair);
    EXPECT_EQ(kvlmExtract_ma_32f_P(table.data(), 0, 4, buffer.data(), 65537, 65537, 2), kvlOk);
    EXPECT_EQ(std::count(buffer.begin(), buffer.begin() + left, 7.0f), left);
    EXPECT_EQ(std::count(buffer.begin() + left, buffer.end(), 8.0f), left);
    EXPECT_EQ(buffer.back(), -1);
}

} // namespace
