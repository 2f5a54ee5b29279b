// Operands for tests: logical elements laid out in memory by any description, in a frame that shows every stray access.
#pragma once

#include "call.h"
#include "random.h"

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <memory>
#include <numeric>

// How strides are chosen. `padded` keeps rows and objects on multiples of 16 bytes, `paddedRows` the rows alone;
// `interleaved` puts the objects side by side at each position, `rowsInterleaved` the objects' equal rows;
// `overlapping` takes an object stride, or list entries, that make objects share elements. `nested` has elements, rows
// and objects inside one another in any order, with any gaps, at any byte; strides that tell nothing are of any size,
// and entries of tables point anywhere. `anyhow` has any strides and equal entries: for what is read.
// clang-format off
enum class Layout {
    packed, padded, paddedRows, gaps, strided, columnMajor, interleaved, rowsInterleaved, overlapping, nested, anyhow
};
// clang-format on
constexpr int disjointLayouts = static_cast<int>(Layout::overlapping); // all before it

// Where the bytes lie: anywhere, on a multiple of an element's size, directly before an unreadable page, or directly
// behind one.
enum class Memory { heap, heapBySize, beforePage, behindPage };

// A run of bytes at a wanted place. The readable bytes next to it, from low() to low() + size(), are guards.
class Room {
public:
    Room(std::size_t bytes, Memory memory, int offset = 0)
    {
        if (memory == Memory::heap || memory == Memory::heapBySize) {
            heap.resize(bytes + 2 * guard + 32);
            const auto start = reinterpret_cast<std::uintptr_t>(heap.data());
            lowest = heap.data() + (16 - start % 16) % 16 + offset;
            first = lowest + guard;
            length = bytes + 2 * guard;
        } else {
            require(bytes + guard <= pageRoom, "an operand beside an unreadable page is too long");
            pages = takePages();
            first = memory == Memory::beforePage ? pages + pageRoom - bytes : pages;
            lowest = memory == Memory::beforePage ? first - guard : first;
            length = bytes + guard;
        }
    }
    ~Room()
    {
        if (pages)
            freePages().push_back(pages);
    }
    Room(const Room &) = delete;
    Room &operator=(const Room &) = delete;

    unsigned char *data() const { return first; }
    unsigned char *low() const { return lowest; }
    std::size_t size() const { return length; }
    std::size_t before() const { return first - lowest; } // guards
    std::vector<unsigned char> bytes() const { return {lowest, lowest + length}; }
    // Fills it, guards too, with f(position counted from data()).
    template <class F>
    void fill(F f)
    {
        for (std::size_t k = 0; k < length; ++k)
            lowest[k] = static_cast<unsigned char>(f(static_cast<std::ptrdiff_t>(k - before())));
    }

private:
    static constexpr std::size_t guard = 64, pageRoom = 1 << 16;

    static std::vector<unsigned char *> &freePages()
    {
        static std::vector<unsigned char *> list;
        return list;
    }
    static unsigned char *takePages()
    {
        if (freePages().empty()) {
            const std::size_t page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
            void *map = mmap(nullptr, pageRoom + 2 * page, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
            require(map != MAP_FAILED, "mmap");
            freePages().push_back(static_cast<unsigned char *>(map) + page);
            require(mprotect(freePages().back(), pageRoom, PROT_READ | PROT_WRITE) == 0, "mprotect");
        }
        unsigned char *inside = freePages().back();
        freePages().pop_back();
        return inside;
    }

    std::vector<unsigned char> heap;
    unsigned char *pages = nullptr, *first, *lowest;
    std::size_t length;
};

// The shape as the operation counts it; a t operand is stored with rows and columns exchanged.
struct Shape {
    int rows;
    int columns;
    int count;
};

// One operand: m, t, v or c, the same with a for arrays, or d for plain adjacent elements (`columns` for each of
// `count` objects: scalar results, pivots, buffers). Everything but the elements is filled with a signalling NaN.
template <class T>
class Operand {
public:
    Operand(const std::string &letters, char description, Shape shape, Layout layout, Random &random,
            Memory memory = Memory::heap)
        : letter(letters[0]), array(letters.size() > 1 || letter == 'd'), form(description),
          objects(array ? shape.count : 1), perObject(shape.rows * shape.columns)
    {
        const bool turned = letter == 't';
        const int rows = turned ? shape.columns : shape.rows, columns = turned ? shape.rows : shape.columns;
        if (letter == 'd' || (form == 'L' && !array) || (form == 'P' && letter == 'c'))
            form = 'S';
        chooseStrides(letter == 'd' ? Layout::packed : layout, rows, columns, random);

        const bool overlaps = layout == Layout::overlapping;
        std::vector<int> position(perObject), start(objects);
        for (int k = 0; k < perObject; ++k)
            position[k] = size * (k / columns * row + k % columns * elem);
        // Entries of packed objects mostly stay in their order: the library has a way of its own for such tables.
        if (form == 'P' && overlaps && array && random.below(2))
            overlapNeighbours(position, random);
        else if (form == 'P' && (layout != Layout::packed || random.below(8) == 0))
            reorder(position, random);
        for (int i = 0; i < objects; ++i)
            start[i] = objects > 1 ? size * i * obj : 0;
        if (form == 'L')
            reorder(start, random);
        if (layout >= Layout::nested && form == 'P')
            scatter(position, start.back(), layout, random);
        const int end = *std::max_element(position.begin(), position.end());
        if (layout >= Layout::nested && form == 'L')
            scatter(start, end, layout, random);
        for (int i = 1; i < objects && form == 'L' && overlaps; ++i)
            if (random.below(2)) { // the same object, or one that begins with the other's last element
                const int other = start[random.below(i)];
                start[i] = other + random.below(2) * end;
            }
        for (int from : start)
            for (int k = 0; k < perObject; ++k)
                offsets.push_back(from + position[turned ? k % shape.columns * columns + k / shape.columns : k]);
        place(*std::max_element(start.begin(), start.end()) + end + size, layout, memory, random);

        shift = size * random.below(layout < Layout::nested || random.below(2) ? 4 : 1000);
        if (form == 'S')
            return;
        std::vector<const unsigned char *> pointers;
        for (int entry : form == 'P' ? position : start)
            pointers.push_back(room->data() + entry - shift);
        table.reset(new Room(pointers.size() * sizeof(void *), memory));
        std::memcpy(table->data(), pointers.data(), pointers.size() * sizeof(void *));
        tableImage = table->bytes();
    }

    std::size_t elements() const { return offsets.size(); }

    // Writes the elements, in the order object, row, column of the operation.
    void set(const std::vector<T> &values)
    {
        for (std::size_t k = 0; k < offsets.size(); ++k)
            std::memcpy(room->data() + offsets[k], &values[k], size);
        image = room->bytes();
    }
    std::vector<T> get() const
    {
        std::vector<T> values(offsets.size());
        for (std::size_t k = 0; k < offsets.size(); ++k)
            std::memcpy(&values[k], room->data() + offsets[k], size);
        return values;
    }
    // What difference() compares with: the memory as it was, and these elements written object after object, as far as
    // isWritten(position in the object).
    template <class Written>
    void expect(const std::vector<T> &values, int firstObject, int count, Written isWritten)
    {
        for (int k = firstObject * perObject; k < (firstObject + count) * perObject; ++k)
            if (isWritten(k % perObject))
                std::memcpy(&image[room->before() + offsets[k]], &values[k], size);
    }
    void expect(const std::vector<T> &values, int firstObject, int count)
    {
        expect(values, firstObject, count, [](int) { return true; });
    }
    // Back to the memory as it was built or set.
    void restore(const std::vector<unsigned char> &saved)
    {
        image = saved;
        std::memcpy(room->low(), image.data(), image.size());
    }
    const std::vector<unsigned char> &expected() const { return image; }

    // Empty, or where the memory first differs from what is expected of it.
    std::string difference() const
    {
        if (table && table->bytes() != tableImage)
            return "a table entry was changed";
        const unsigned char *const memory = room->low();
        if (std::memcmp(memory, image.data(), image.size()) == 0)
            return "";
        const auto at = std::mismatch(image.begin(), image.end(), memory).first - image.begin();
        const int byte = static_cast<int>(at - room->before());
        for (std::size_t k = offsets.size(); k-- > 0;)
            if (byte >= offsets[k] && byte < offsets[k] + size)
                return "element " + std::to_string(k) + " (object " + std::to_string(k / perObject) + ") is " +
                       hex(&memory[room->before() + offsets[k]]) + ", expected " +
                       hex(&image[room->before() + offsets[k]]);
        return "byte " + std::to_string(byte) + " is no element and was changed";
    }

    // What the first of its arguments is, the bytes from data() to each element, and where these are.
    const void *argument() const { return form == 'S' ? room->data() : table->data(); }
    const std::vector<int> &places() const { return offsets; }
    unsigned char *data() const { return room->data(); }
    bool isTable() const { return form == 'P'; }
    bool isList() const { return form == 'L'; }
    bool hasAdjacentElements() const { return elem == 1 || letter == 'c'; }
    bool isArray() const { return array; }
    bool isConstant() const { return letter == 'c'; }
    // Where object i begins.
    std::uintptr_t address(int i) const
    {
        return reinterpret_cast<std::uintptr_t>(room->data()) + offsets[array ? i * perObject : 0];
    }
    // Whether base, row stride and object stride, as far as it has them, are multiples of this.
    bool isAligned(int bytes) const
    {
        return reinterpret_cast<std::uintptr_t>(room->data()) % bytes == 0 &&
               (letter == 'v' || row * size % bytes == 0) && (!array || obj * size % bytes == 0);
    }

    // Adds the operand's arguments in the order of a public signature.
    void appendTo(Args &args) const
    {
        if (letter == 'c' && !array)
            return append(args, Arg::constant(get()[0]));
        append(args, form == 'S' ? Arg::base(room->data()) : Arg::tableOf(table->data()));
        if (form != 'S')
            append(args, Arg::integer('H', shift));
        if (array && form != 'L' && letter != 'd')
            append(args, Arg::integer('O', obj * size));
        if (form != 'P' && (letter == 'm' || letter == 't'))
            append(args, Arg::integer('T', row * size));
        if (form != 'P' && letter != 'c' && letter != 'd')
            append(args, Arg::elemStride(elem * size));
    }

private:
    static constexpr int size = sizeof(T);

    void chooseStrides(Layout layout, int rows, int columns, Random &random)
    {
        const int pad = 16 / size;
        elem = layout == Layout::strided ? 2 + random.below(2) : 1;
        row = columns * elem;
        if (layout == Layout::padded || layout == Layout::paddedRows)
            row = (columns + pad - 1) / pad * pad;
        else if (layout == Layout::gaps)
            row += 1 + random.below(3);
        else if (layout == Layout::strided)
            row += random.below(3);
        obj = rows * row;
        if (layout == Layout::paddedRows)
            obj += 1;
        else if (layout == Layout::gaps || layout == Layout::strided)
            obj += random.below(4);
        else if (layout == Layout::columnMajor) {
            row = 1;
            elem = rows + random.below(2);
            obj = columns * elem + random.below(3);
        } else if (layout == Layout::interleaved) {
            obj = 1;
            elem = objects + random.below(2);
            row = columns * elem;
        } else if (layout == Layout::rowsInterleaved) {
            obj = columns + random.below(2);
            row = objects * obj;
        } else if (layout == Layout::overlapping) {
            const int step = random.below(2) ? 1 : std::max(1, objects - 1); // one short of interleaved
            const bool byColumns = random.below(2);
            elem = byColumns ? rows * step : step;
            row = byColumns ? step : columns * step;
            // One element in common, or more.
            obj = random.below(4) == 0 ? std::max(1, rows * columns * step - 1)
                                       : 1 + random.below(2) * random.below(rows * columns);
        } else if (layout == Layout::nested || (layout == Layout::anyhow && random.below(2)))
            nest(rows, columns, random);
        else if (layout == Layout::anyhow) {
            const auto stride = [&](int n) { return 1 + random.below(std::max(1, std::min(40, 1000 / n))); };
            elem = random.below(2) ? 1 : stride(columns);
            row = random.below(2) ? 1 : stride(rows);
            obj = stride(objects);
        }
    }

    // Runs over the objects that lie apart and ascend, but for one that begins at the last element of its neighbour.
    void overlapNeighbours(std::vector<int> &position, Random &random)
    {
        obj = 1;
        for (std::size_t k = 0; k < position.size(); ++k)
            position[k] = static_cast<int>(k) * objects * size;
        if (position.size() > 1)
            position[1 + random.below(static_cast<int>(position.size()) - 1)] -= size;
    }

    void nest(int rows, int columns, Random &random)
    {
        struct Axis {
            int &stride;
            int number;
        };
        Axis axes[] = {{elem, columns}, {row, rows}, {obj, objects}};
        const int orders[][3] = {{0, 1, 2}, {0, 1, 2}, {0, 1, 2}, {0, 2, 1},
                                 {1, 0, 2}, {1, 2, 0}, {2, 0, 1}, {2, 1, 0}};
        const int most = std::max(1, std::min(40, 2000 / (perObject * objects)));
        int extent = 1;
        for (int k : orders[random.below(8)]) {
            Axis &axis = axes[k];
            const int kind = random.below(8);
            axis.stride = extent + (kind < 4 ? 0 : random.below(kind < 6 ? std::min(most, 4) : most));
            if (axis.number == 1 && kind > 5) // of no meaning: any size will do
                axis.stride = kind == 6 ? 1 : std::numeric_limits<int>::max() / size - random.below(3);
            else
                extent += (axis.number - 1) * axis.stride;
        }
    }

    // Puts entries, behind each of which so many bytes lie, anywhere, apart from each other; for what is read some are
    // others again.
    void scatter(std::vector<int> &entries, int bytes, Layout layout, Random &random)
    {
        if (random.below(2) && (bytes + 2 * size + 16) * entries.size() < 50000) {
            for (std::size_t k = 0; k < entries.size(); ++k)
                entries[k] = static_cast<int>(k) * (bytes + size + 16) + random.below(16);
            reorder(entries, random);
        }
        for (std::size_t k = 1; layout == Layout::anyhow && k < entries.size(); ++k)
            if (random.below(4) == 3)
                entries[k] = entries[random.below(static_cast<int>(k))];
    }

    static void reorder(std::vector<int> &values, Random &random)
    {
        const int order = random.below(4); // 0: as they are
        if (order == 3 && values.size() > 1)
            std::swap(values.back(), values[values.size() - 2]);
        if (order == 1)
            std::reverse(values.begin(), values.end());
        for (std::size_t k = values.size(); order == 2 && k > 1; --k)
            std::swap(values[k - 1], values[random.below(static_cast<int>(k))]);
    }

    void place(int bytes, Layout layout, Memory memory, Random &random)
    {
        // Four-byte alignment of a double is an ordinary case of the 32-bit ABI only.
        const int unit = memory == Memory::heapBySize ? size : alignof(Aligned);
        int offset = layout < Layout::nested ? random.below(8) % 4 * 4 & -unit : random.below(16);
        if (layout == Layout::padded || layout == Layout::paddedRows || random.below(3) == 0)
            offset = 0;
        room.reset(new Room(bytes, memory, offset));
        const std::uint32_t word = size == 8 ? 0x7ff4a5a5u : 0x7fa5a5a5u;
        room->fill([&](std::ptrdiff_t at) { return word >> 8 * (at & 3); });
        image = room->bytes();
    }

    static std::string hex(const unsigned char *bytes)
    {
        char text[2 * size + 1];
        for (int k = 0; k < size; ++k)
            std::snprintf(text + 2 * k, 3, "%02x", bytes[size - 1 - k]);
        return text;
    }

    struct Aligned {
        T value;
    };

    char letter;
    bool array;
    char form;
    int objects, perObject;
    int elem = 1, row = 1, obj = 1, shift = 0;
    std::vector<int> offsets;
    std::unique_ptr<Room> room, table;
    std::vector<unsigned char> image, tableImage;
};
