// Operands for tests: logical elements laid out in memory by any description, in a frame that shows every stray access.
#pragma once

#include "call.h"

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <numeric>

// A generator with the same sequence everywhere.
class Random {
public:
    explicit Random(std::uint64_t seed) : state(seed) {}
    std::uint64_t next()
    {
        std::uint64_t z = state += 0x9e3779b97f4a7c15u;
        z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9u;
        z = (z ^ (z >> 27)) * 0x94d049bb133111ebu;
        return z ^ (z >> 31);
    }
    int below(int n) { return static_cast<int>(next() % static_cast<unsigned>(n)); }

private:
    std::uint64_t state;
};

// How strides are chosen. `padded` keeps rows and objects on multiples of 16 bytes, `paddedRows` the rows alone;
// `interleaved` puts the objects side by side at each position, `rowsInterleaved` the objects' equal rows;
// `overlapping` takes an object stride, or list entries, that make objects share elements.
enum class Layout { packed, padded, paddedRows, gaps, strided, columnMajor, interleaved, rowsInterleaved, overlapping };
constexpr int disjointLayouts = static_cast<int>(Layout::overlapping); // all before it

// Where the bytes lie: anywhere, on a multiple of an element's size, directly before an unreadable page, or directly
// behind one.
enum class Memory { heap, heapBySize, beforePage, behindPage };

// A run of bytes at a wanted place. The readable bytes next to it, from low() to low() + size(), are guards.
class Room {
public:
    Room(std::size_t bytes, Memory memory, int offset = 0) : memory(memory)
    {
        if (memory == Memory::heap || memory == Memory::heapBySize) {
            heap.resize(bytes + 2 * guard + 32);
            const auto start = reinterpret_cast<std::uintptr_t>(heap.data());
            first = heap.data() + ((16 - start % 16) % 16) + guard + offset;
            lowest = first - guard;
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

private:
    static constexpr std::size_t guard = 64;
    static constexpr std::size_t pageRoom = 1 << 16;

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
            auto *inside = static_cast<unsigned char *>(map) + page;
            require(mprotect(inside, pageRoom, PROT_READ | PROT_WRITE) == 0, "mprotect");
            return inside;
        }
        unsigned char *inside = freePages().back();
        freePages().pop_back();
        return inside;
    }

    Memory memory;
    std::vector<unsigned char> heap;
    unsigned char *pages = nullptr;
    unsigned char *first;
    unsigned char *lowest;
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
        : letter(letters[0]), array(letters.size() > 1 || letter == 'd'), form(description)
    {
        const bool turned = letter == 't';
        const int storedRows = turned ? shape.columns : shape.rows;
        const int storedColumns = turned ? shape.rows : shape.columns;
        objects = array ? shape.count : 1;
        if (letter == 'd' || (form == 'L' && !array) || (form == 'P' && letter == 'c'))
            form = 'S';
        chooseStrides(letter == 'd' ? Layout::packed : layout, storedRows, storedColumns, random);

        std::vector<int> position(storedRows * storedColumns);
        for (int r = 0; r < storedRows; ++r)
            for (int c = 0; c < storedColumns; ++c)
                position[r * storedColumns + c] = r * row + c * elem;
        if (form == 'P' && layout == Layout::overlapping && array && random.below(2))
            overlapNeighbours(position, random);
        else if (form == 'P')
            reorder(position, random);
        std::vector<int> start(objects);
        for (int i = 0; i < objects; ++i)
            start[i] = i * obj;
        if (form == 'L')
            reorder(start, random);
        if (form == 'L' && layout == Layout::overlapping)
            for (int i = 1; i < objects; ++i)
                if (random.below(2)) // the same object, or one that begins with the other's last element
                    start[i] =
                        start[random.below(i)] + random.below(2) * *std::max_element(position.begin(), position.end());

        const int size = sizeof(T);
        for (int i = 0; i < objects; ++i)
            for (int r = 0; r < shape.rows; ++r)
                for (int c = 0; c < shape.columns; ++c)
                    offsets.push_back(size *
                                      (start[i] + position[turned ? c * storedColumns + r : r * storedColumns + c]));
        perObject = storedRows * storedColumns;
        place(size * (start.empty() ? 0
                                    : *std::max_element(start.begin(), start.end()) +
                                          *std::max_element(position.begin(), position.end()) + 1),
              layout, memory, random);

        shift = size * random.below(4);
        const std::vector<int> &entries = form == 'P' ? position : start;
        if (form != 'S') {
            std::vector<const unsigned char *> pointers;
            for (int entry : entries)
                pointers.push_back(room->data() + size * entry - shift);
            tableImage.resize(pointers.size() * sizeof(void *));
            std::memcpy(tableImage.data(), pointers.data(), tableImage.size());
            table.reset(new Room(tableImage.size(), memory));
            std::memcpy(table->data(), tableImage.data(), tableImage.size());
        }
    }

    std::size_t size() const { return offsets.size(); }

    // Writes the elements, in the order object, row, column of the operation.
    void set(const std::vector<T> &values)
    {
        for (std::size_t k = 0; k < offsets.size(); ++k)
            std::memcpy(room->data() + offsets[k], &values[k], sizeof(T));
        image.assign(room->low(), room->low() + room->size());
    }
    std::vector<T> get() const
    {
        std::vector<T> values(offsets.size());
        for (std::size_t k = 0; k < offsets.size(); ++k)
            std::memcpy(&values[k], room->data() + offsets[k], sizeof(T));
        return values;
    }
    // What difference() compares with: the memory as it was, and these elements written object after object, as far as
    // isWritten(position in the object).
    template <class Written>
    void expect(const std::vector<T> &values, int firstObject, int count, Written isWritten)
    {
        unsigned char *target = image.data() + (room->data() - room->low());
        for (int k = firstObject * perObject; k < (firstObject + count) * perObject; ++k)
            if (isWritten(k % perObject))
                std::memcpy(target + offsets[k], &values[k], sizeof(T));
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
        if (table && std::memcmp(table->data(), tableImage.data(), tableImage.size()) != 0)
            return "a table entry was changed";
        const unsigned char *memory = room->low();
        if (std::memcmp(memory, image.data(), image.size()) == 0)
            return "";
        const auto at = std::mismatch(image.begin(), image.end(), memory).first - image.begin();
        const int byte = static_cast<int>(at - (room->data() - room->low()));
        for (std::size_t k = offsets.size(); k-- > 0;)
            if (byte >= offsets[k] && byte < offsets[k] + static_cast<int>(sizeof(T)))
                return "element " + std::to_string(k) + " (object " + std::to_string(k / perObject) + ") is " +
                       hex(memory + (room->data() - room->low()) + offsets[k]) + ", expected " +
                       hex(image.data() + (room->data() - room->low()) + offsets[k]);
        return "byte " + std::to_string(byte) + " is no element and was changed";
    }

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
        const int size = sizeof(T);
        return reinterpret_cast<std::uintptr_t>(room->data()) % bytes == 0 &&
               (letter == 'v' || row * size % bytes == 0) && (!array || obj * size % bytes == 0);
    }

    // Adds the operand's arguments in the order of a public signature.
    void appendTo(Args &args) const
    {
        const int size = sizeof(T);
        if (letter == 'c' && !array) {
            args.push_back(Arg::constant(get()[0]));
            return;
        }
        args.push_back(form == 'S' ? Arg::base(room->data()) : Arg::tableOf(table->data()));
        if (letter == 'd')
            return;
        if (form != 'S')
            args.push_back(Arg::integer('H', shift));
        if (array && form != 'L')
            args.push_back(Arg::integer('O', obj * size));
        if (form == 'P' || letter == 'c')
            return;
        if (letter != 'v')
            args.push_back(Arg::integer('T', row * size));
        args.push_back(Arg::integer('T', elem * size));
    }

private:
    void chooseStrides(Layout layout, int rows, int columns, Random &random)
    {
        const int pad = 16 / static_cast<int>(sizeof(T));
        const int paddedRow = (columns + pad - 1) / pad * pad;
        elem = 1;
        row = columns;
        switch (layout) {
        case Layout::packed:
            break;
        case Layout::padded:
        case Layout::paddedRows:
            row = paddedRow;
            break;
        case Layout::gaps:
            row += 1 + random.below(3);
            break;
        case Layout::strided:
            elem = 2 + random.below(2);
            row = columns * elem + random.below(3);
            break;
        case Layout::columnMajor:
            row = 1;
            elem = rows + random.below(2);
            obj = columns * elem + random.below(3);
            return;
        case Layout::interleaved:
            obj = 1;
            elem = objects + random.below(2);
            row = columns * elem;
            return;
        case Layout::rowsInterleaved:
            obj = columns + random.below(2);
            row = objects * obj;
            return;
        case Layout::overlapping: {
            const int step = random.below(2) ? 1 : std::max(1, objects - 1); // one short of interleaved
            const bool byColumns = random.below(2);
            elem = byColumns ? rows * step : step;
            row = byColumns ? step : columns * step;
            // One element in common, or more.
            obj = random.below(4) == 0 ? std::max(1, rows * columns * step - 1)
                                       : 1 + random.below(2) * random.below(rows * columns);
            return;
        }
        }
        obj = rows * row;
        if (layout == Layout::paddedRows)
            obj += 1;
        else if (layout == Layout::gaps || layout == Layout::strided)
            obj += random.below(4);
    }

    // Runs over the objects that lie apart and ascend, but for one that begins at the last element of its neighbour.
    void overlapNeighbours(std::vector<int> &position, Random &random)
    {
        obj = 1;
        for (std::size_t k = 0; k < position.size(); ++k)
            position[k] = static_cast<int>(k) * objects;
        if (position.size() > 1)
            position[1 + random.below(static_cast<int>(position.size()) - 1)] -= 1;
    }

    static void reorder(std::vector<int> &values, Random &random)
    {
        const int order = random.below(3);
        if (order == 1)
            std::reverse(values.begin(), values.end());
        for (std::size_t k = values.size(); order == 2 && k > 1; --k)
            std::swap(values[k - 1], values[random.below(static_cast<int>(k))]);
    }

    void place(int bytes, Layout layout, Memory memory, Random &random)
    {
        // Four-byte alignment of a double is an ordinary case of the 32-bit ABI only.
        const int unit = memory == Memory::heapBySize ? sizeof(T) : alignof(Aligned);
        int offset = random.below(8) % 4 * 4 & -unit;
        if (layout == Layout::padded || layout == Layout::paddedRows || random.below(3) == 0)
            offset = 0;
        room.reset(new Room(bytes, memory, offset));
        const std::uint32_t word = sizeof(T) == 8 ? 0x7ff4a5a5u : 0x7fa5a5a5u;
        for (std::size_t k = 0; k < room->size(); ++k)
            room->low()[k] = static_cast<unsigned char>(word >> 8 * ((&room->low()[k] - room->data()) & 3));
        image.assign(room->low(), room->low() + room->size());
    }

    static std::string hex(const unsigned char *bytes)
    {
        char text[2 * sizeof(T) + 1];
        for (std::size_t k = 0; k < sizeof(T); ++k)
            std::snprintf(text + 2 * k, 3, "%02x", bytes[sizeof(T) - 1 - k]);
        return text;
    }

    struct Aligned {
        T value;
    };

    char letter;
    bool array;
    char form;
    int objects = 1;
    int perObject = 0;
    int elem = 1;
    int row = 1;
    int obj = 1;
    int shift = 0;
    std::vector<int> offsets;
    std::unique_ptr<Room> room;
    std::unique_ptr<Room> table;
    std::vector<unsigned char> image;
    std::vector<unsigned char> tableImage;
};
