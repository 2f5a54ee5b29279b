// Moves of elements on operands that overlap in every way, against plain loops over memory, and what no table of
// members tells: strides that single objects do not have, sizes that wrap, a batch around all descriptions.
#include "problem.h"

#include <gtest/gtest.h>

#include <climits>

namespace {

using Bytes = std::vector<unsigned char>;

// An operand anywhere in a small memory that it shares with the others, now and then about where another ends: where
// its elements begin, and its arguments.
struct Anywhere {
    Anywhere(char form, bool array, int rows, int columns, int count, int size, Bytes &memory, Random &random,
             const Anywhere *neighbour = nullptr)
        : columns(columns), positions(rows * columns)
    {
        const int objects = array ? count : 1;
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
        const auto offset = [&](int i, int r, int c) { return i * obj + r * row + c * elem; };
        const int room = static_cast<int>(memory.size()) - size - offset(objects - 1, rows - 1, columns - 1);
        int start = 4 * random.below(room / 4);
        if (neighbour && random.below(3) == 0) {
            const std::vector<int> &other = neighbour->offsets;
            const int end = random.below(2) ? *std::max_element(other.begin(), other.end())
                                            : *std::min_element(other.begin(), other.end()) -
                                                  offset(objects - 1, rows - 1, columns - 1);
            start = std::min(std::max(0, end + size * (random.below(3) - 1)), room - 4);
        }
        const bool regular = random.below(3);
        std::vector<int> position(positions), object(objects);
        for (int p = 0; p < positions; ++p)
            position[p] = regular                     ? offset(0, p / columns, p % columns)
                          : p > 0 && !random.below(4) ? position[random.below(p)]
                                                      : 4 * random.below(room / 4) - start;
        for (int i = 0; i < objects; ++i)
            object[i] = regular || form != 'L' ? i * obj : 4 * random.below(room / 4) - start;
        for (int i = 0; i < objects; ++i)
            for (int p = 0; p < positions; ++p)
                offsets.push_back(start + object[i] +
                                  (form == 'P' ? position[p] : offset(0, p / columns, p % columns)));
        adjacent = elem == size;

        const int shift = form == 'S' ? 0 : 8 * random.below(3);
        for (int place : form == 'P' ? position : object)
            table.push_back(memory.data() + start + place - shift);
        args.push_back(form == 'S' ? Arg::base(memory.data() + start) : Arg::tableOf(table.data()));
        if (form != 'S')
            args.push_back(Arg::integer('H', shift));
        if (array && form != 'L')
            args.push_back(Arg::integer('O', obj));
        if (rows > 0 && form != 'P') {
            rowArgument = args.size();
            args.push_back(Arg::integer('T', row));
            args.push_back(Arg::integer('T', elem));
        }
    }
    void withoutRows(bool isVector)
    {
        if (isVector && rowArgument)
            args.erase(args.begin() + rowArgument);
    }
    int at(int i, int r, int c) const { return offsets[i * positions + r * columns + c]; }

    int columns, positions;
    std::size_t rowArgument = 0;
    bool adjacent = false;
    std::vector<int> offsets;
    std::vector<const void *> table;
    Args args;
};

// The memory after single elements have been moved in the order of the member.
void moveInOrder(const Member &member, Bytes &memory, const Anywhere &src, const Anywhere &dst, int width, int height,
                 int count)
{
    const int size = member.elementSize();
    const bool isTable = member.description == 'P';
    const auto move = [&](int to, int from) {
        unsigned char element[8];
        std::copy_n(&memory[from], size, element);
        std::copy_n(element, size, &memory[to]);
    };
    if (member.family == "Extract" && isTable && !member.has("ta") && !member.has("t")) {
        for (int p = 0; p < width * height; ++p)
            for (int i = 0; i < count; ++i)
                move(dst.at(i, p / width, p % width), src.at(i, p / width, p % width));
        return;
    }
    const bool transposes = member.family == "Transpose";
    const bool unrolled = width == height && width >= 3 && width <= 6;
    const bool bySource = transposes && isTable && !unrolled, turned = member.has("t") || member.has("ta");
    for (int i = 0; i < count; ++i)
        if (member.family == "LoadIdentity")
            for (int r = 0; r < height; ++r) {
                for (int c = 0; c < width; ++c)
                    std::fill_n(&memory[dst.at(i, r, c)], size, 0);
                const float one = 1;
                const double one64 = 1;
                if (r < width)
                    std::memcpy(&memory[dst.at(i, r, r)], size == 8 ? static_cast<const void *>(&one64) : &one, size);
            }
        else if (transposes && !bySource)
            for (int c = 0; c < width; ++c)
                for (int r = 0; r < height; ++r)
                    move(dst.at(i, c, r), src.at(i, r, c));
        else
            for (int r = 0; r < height; ++r)
                for (int c = 0; c < width; ++c)
                    move(transposes ? dst.at(i, c, r) : dst.at(i, r, c), turned ? src.at(i, c, r) : src.at(i, r, c));
}

bool isMove(const Member &member)
{
    return member.family == "Copy" || member.family == "Extract" || member.family == "LoadIdentity" ||
           member.family == "Transpose";
}

TEST(Moves, OperandsThatOverlapAnyhow)
{
    for (const Member &member : members()) {
        const int size = member.elementSize();
        int wrong = 0;
        for (int turn = 0; turn < 500 && isMove(member) && !wrong; ++turn) {
            Random random(turn);
            const bool isVector = member.isVector(), isArray = member.isArray();
            const bool large = turn % 25 == 24; // more than is moved at a time
            const int width = 1 + random.below(large ? 40 : 7);
            const int height = isVector ? 1 : random.below(2) && !large ? width : 1 + random.below(7);
            const int count = isArray ? 1 + random.below(large ? 80 : 10) : 1;
            Bytes memory(large ? 200000 : 4096 + 8192 * random.below(2));
            for (std::size_t k = 0; k < memory.size(); k += 8) {
                const std::uint64_t word = random.next();
                std::memcpy(&memory[k], &word, 8);
            }
            const bool turned = member.has("t") || member.has("ta"), transposes = member.family == "Transpose";
            Anywhere src(member.description, isArray, turned ? width : height, turned ? height : width, count, size,
                         memory, random);
            Anywhere dst(member.dstDescription, isArray, transposes ? width : height, transposes ? height : width,
                         count, size, memory, random, &src);
            if (transposes && member.description != 'P' && src.adjacent && dst.adjacent)
                continue; // must not overlap
            src.withoutRows(isVector);
            dst.withoutRows(isVector);
            if (member.family == "Extract") {
                const int room = static_cast<int>(memory.size()) - count * width * height * size;
                const int end =
                    *std::max_element(src.offsets.begin(), src.offsets.end()) + size * (random.below(3) - 1);
                const int start = random.below(3) && end >= 0 && end < room ? end : 4 * random.below(room / 4);
                dst.args = {Arg::base(memory.data() + start)};
                for (std::size_t k = 0; k < dst.offsets.size(); ++k)
                    dst.offsets[k] = start + static_cast<int>(k) * size;
            }
            Args args, shape = {Arg::integer('S', width)};
            if (!isVector)
                shape.push_back(Arg::integer('S', height));
            const auto add = [&](const Args &more) { args.insert(args.end(), more.begin(), more.end()); };
            if (member.family != "LoadIdentity")
                add(src.args);
            if (transposes)
                add(shape);
            add(dst.args);
            if (!transposes)
                add(shape);
            if (isArray)
                args.push_back(Arg::integer('C', count));

            Bytes expected = memory;
            moveInOrder(member, expected, src, dst, width, height, count);
            const std::vector<const void *> tables[] = {src.table, dst.table};
            EXPECT_EQ(member.call(args), kvlOk);
            wrong = memory != expected || tables[0] != src.table || tables[1] != dst.table;
            EXPECT_FALSE(wrong) << member.name << " " << width << "x" << height << " count " << count << " turn "
                                << turn;
        }
    }
}

// Two doubles of a table that begin 4 bytes from each other: the second overwrites half of the first.
TEST(Moves, EntriesHalfAnElementApart)
{
    unsigned char memory[256], expected[sizeof memory];
    std::fill(std::begin(memory), std::end(memory), 0x5a);
    std::copy(std::begin(memory), std::end(memory), expected);
    const auto at = [&](int offset) { return reinterpret_cast<double *>(memory + offset); };
    double *const table[] = {at(0), at(4)};
    const double one = 1;
    for (int object : {0, 64}) {
        std::memcpy(expected + object, &one, sizeof one);
        std::fill_n(expected + object + 4, sizeof(double), 0);
        std::memcpy(expected + object, &one, sizeof one);
    }
    EXPECT_EQ(kvlmLoadIdentity_ma_64f_P(table, 0, 64, 2, 1, 2), kvlOk);
    EXPECT_TRUE(std::equal(std::begin(memory), std::end(memory), expected));
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
        for (int turn = 0; turn < 24 && isMove(member) && member.isArray(); ++turn) {
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
            const int size = member.elementSize();
            Random random(1);
            Bytes memory(1024, 0xa5), expected;
            Anywhere src(member.description, true, 1, 3, 1, size, memory, random);
            Anywhere dst(member.dstDescription, true, 1, 3, 1, size, memory, random);
            src.withoutRows(member.isVector());
            dst.withoutRows(member.isVector());
            Args args = member.family == "Copy" ? src.args : Args();
            args.insert(args.end(), dst.args.begin(), dst.args.end());
            args.push_back(Arg::integer('S', 3));
            if (!member.isVector())
                args.push_back(Arg::integer('S', 1));
            args.push_back(Arg::integer('C', 1));
            for (Arg &arg : args)
                if (arg.check == 'O') {
                    arg.number = stride;
                    ++tried;
                }
            expected = memory;
            moveInOrder(member, expected, src, dst, 3, 1, 1);
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

// A batch goes from description to description through all nine pairs, and comes back with its bits.
template <class T>
void goAround(const std::string &stem, bool isVector)
{
    constexpr int width = 5, count = 11;
    const int height = isVector ? 1 : 3, size = sizeof(T);
    const char ring[] = "SSPPLLSLPS";
    Random random(4);
    std::vector<T> values(width * height * count);
    for (T &value : values) { // signalling NaNs with payloads
        const std::uint64_t bits = random.next();
        const std::uint64_t nan = size == 8 ? 0x7ff0000000000000u | bits >> 13 : 0x7f800000u | (bits >> 42 | 1);
        std::memcpy(&value, &nan, sizeof value);
    }
    std::unique_ptr<Operand<T>> last;
    const auto stop = [&](char form) {
        return new Operand<T>(isVector ? "va" : "ma", form, {height, width, count}, Layout::gaps, random);
    };
    last.reset(stop('S'));
    last->set(values);
    for (int k = 1; ring[k]; ++k) {
        const std::string name = stem + ring[k - 1] + ring[k];
        const auto member =
            std::find_if(members().begin(), members().end(), [&](const Member &m) { return m.name == name; });
        ASSERT_NE(member, members().end()) << name;
        std::unique_ptr<Operand<T>> next(stop(ring[k]));
        Args args;
        last->appendTo(args);
        next->appendTo(args);
        args.push_back(Arg::integer('S', width));
        if (!isVector)
            args.push_back(Arg::integer('S', height));
        args.push_back(Arg::integer('C', count));
        EXPECT_EQ(member->call(args), kvlOk) << name;
        last = std::move(next);
    }
    EXPECT_EQ(std::memcmp(last->get().data(), values.data(), values.size() * sizeof(T)), 0) << stem;
}

TEST(Moves, AroundAllDescriptions)
{
    goAround<float>("kvlmCopy_ma_32f_", false);
    goAround<double>("kvlmCopy_ma_64f_", false);
    goAround<float>("kvlmCopy_va_32f_", true);
    goAround<double>("kvlmCopy_va_64f_", true);
}

} // namespace
