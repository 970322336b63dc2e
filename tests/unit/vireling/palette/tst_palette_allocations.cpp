#include "vireling/palette/theme.h"

#include <QtTest>

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<int> allocationCount{0};

void *countedAllocation(std::size_t size) noexcept
{
    ++allocationCount;
    return std::malloc(size > 0 ? size : 1);
}

} // namespace

// In place of the library's for this whole program, Qt included.
void *operator new(std::size_t size)
{
    if (void *memory = countedAllocation(size))
        return memory;
    std::abort();
}
void *operator new[](std::size_t size)
{
    return operator new(size);
}
void *operator new(std::size_t size, const std::nothrow_t &) noexcept
{
    return countedAllocation(size);
}
void *operator new[](std::size_t size, const std::nothrow_t &) noexcept
{
    return countedAllocation(size);
}
void operator delete(void *memory) noexcept
{
    std::free(memory);
}
void operator delete[](void *memory) noexcept
{
    std::free(memory);
}
void operator delete(void *memory, std::size_t) noexcept
{
    std::free(memory);
}
void operator delete[](void *memory, std::size_t) noexcept
{
    std::free(memory);
}

using namespace Vireling;

/** A palette is copied whenever a widget is polished. */
class TestPaletteAllocations : public QObject
{
    Q_OBJECT

private slots:
    void theCounterCounts();
    void aCopyAllocatesNothing();
    void anAssignmentAllocatesNothing();
    void copyingTheOwnRolesAllocatesNothing();
    void anEmptyUserPaletteAllocatesNothing();
    void comparingAllocatesNothing();
    void theFirstWriteToACopyAllocates();

private:
    const Palette palette = themePalette(Theme::Dark);
};

void TestPaletteAllocations::theCounterCounts()
{
    const int before = allocationCount;
    const auto *volatile number = new int(1);
    QCOMPARE(allocationCount - before, 1);
    delete number;
}

void TestPaletteAllocations::aCopyAllocatesNothing()
{
    const int before = allocationCount;
    const Palette copy = palette;
    const int allocated = allocationCount - before;
    QCOMPARE(allocated, 0);
    QVERIFY(copy == palette);
}

void TestPaletteAllocations::anAssignmentAllocatesNothing()
{
    Palette copy = themePalette(Theme::Light);
    const int before = allocationCount;
    copy = palette;
    const int allocated = allocationCount - before;
    QCOMPARE(allocated, 0);
    QVERIFY(copy == palette);
}

void TestPaletteAllocations::copyingTheOwnRolesAllocatesNothing()
{
    const int before = allocationCount;
    const UserPalette copy = palette.extended();
    const int allocated = allocationCount - before;
    QCOMPARE(allocated, 0);
    QVERIFY(copy == palette.extended());
}

void TestPaletteAllocations::anEmptyUserPaletteAllocatesNothing()
{
    const int before = allocationCount;
    const UserPalette empty;
    const int allocated = allocationCount - before;
    QCOMPARE(allocated, 0);
    QVERIFY(empty.setMask().none());
}

void TestPaletteAllocations::comparingAllocatesNothing()
{
    const Palette copy = palette;
    const int before = allocationCount;
    const bool equal = copy == palette;
    const int allocated = allocationCount - before;
    QCOMPARE(allocated, 0);
    QVERIFY(equal);
}

void TestPaletteAllocations::theFirstWriteToACopyAllocates()
{
    UserPalette copy = palette.extended();
    const int before = allocationCount;
    copy.setBrush(ColourRole::Frame, QBrush());
    const int allocated = allocationCount - before;
    QVERIFY(allocated > 0);
}

QTEST_MAIN(TestPaletteAllocations)
#include "tst_palette_allocations.moc"
