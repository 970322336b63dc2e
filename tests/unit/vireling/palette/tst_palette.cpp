#include "vireling/palette/palette.h"

#include <QtTest>

#include <array>
#include <utility>

using namespace Vireling;

namespace {

const QBrush red(QColor(Qt::red));
const QBrush green(QColor(Qt::green));
const QBrush blue(QColor(Qt::blue));

constexpr std::array<QPalette::ColorGroup, 3> allGroups{QPalette::Active, QPalette::Disabled,
                                                        QPalette::Inactive};

std::size_t bit(QPalette::ColorGroup group, ColourRole role)
{
    return std::size_t(group) * 28 + std::size_t(role);
}

} // namespace

class TestPalette : public QObject
{
    Q_OBJECT

private slots:
    void aRoleKeyTellsBothFamiliesApart();
    void aRoleNeverSetIsAnEmptyBrush();
    void oneGroupIsSetAlone();
    void withoutAGroupAllAreSet();
    void allGroupsCanBeNamed();
    void aColourBecomesASolidBrush();
    void theCurrentGroupFollowsThePalette();
    void whatIsNoRoleIsIgnored();
    void theMaskIsGroupMajor();
    void aCopyIsDetachedByAWrite();
    void aMovedFromPaletteIsUsable();
    void equalityLooksAtBothFamilies();
    void equalityLooksAtMaskAndBrushes();
    void resolvingWithNothingSetShowsTheOtherAndStaysUnset();
    void resolvingEqualPalettesGivesTheOther();
    void resolvingTakesWhatIsUnsetFromTheOther();
    void resolvingLeavesBothAsTheyWere();
    void resolvingAPaletteDoesBothFamilies();
    void aUserPaletteTravelsInAVariant();
};

void TestPalette::aRoleKeyTellsBothFamiliesApart()
{
    const PaletteRoleKey qtKey = QPalette::Base;
    const PaletteRoleKey ownKey = ColourRole::TabBase;
    QCOMPARE(sizeof(PaletteRoleKey), std::size_t(8));
    QCOMPARE(qtKey.role, qint32(QPalette::Base));
    QCOMPARE(int(qtKey.kind), 0);
    QCOMPARE(ownKey.role, 20);
    QCOMPARE(int(ownKey.kind), 1);

    Palette palette;
    const QBrush before = palette.brush(QPalette::Active, QPalette::ColorRole(ownKey.role));
    palette.setBrush(ownKey, red);
    palette.setBrush(qtKey, green);
    QCOMPARE(palette.brush(QPalette::Active, ColourRole::TabBase), red);
    QCOMPARE(palette.brush(QPalette::Active, QPalette::Base), green);
    QCOMPARE(palette.brush(QPalette::Active, QPalette::ColorRole(ownKey.role)), before);
}

void TestPalette::aRoleNeverSetIsAnEmptyBrush()
{
    Palette palette;
    QCOMPARE(palette.brush(QPalette::Active, ColourRole::Frame), QBrush());
    palette.setBrush(ColourRole::TabBase, red);
    QCOMPARE(palette.brush(QPalette::Active, ColourRole::Frame), QBrush());
    QVERIFY(palette.extended().setMask().count() == 3);
}

void TestPalette::oneGroupIsSetAlone()
{
    for (const PaletteRoleKey key :
         {PaletteRoleKey(QPalette::Link), PaletteRoleKey(ColourRole::Frame)}) {
        Palette palette;
        palette.setBrush(key, red);
        palette.setBrush(QPalette::Disabled, key, blue);
        const auto brush = [&](QPalette::ColorGroup group) {
            return key.kind == PaletteRoleKey::QtRole ? palette.brush(group, QPalette::Link)
                                                      : palette.brush(group, ColourRole::Frame);
        };
        QCOMPARE(brush(QPalette::Active), red);
        QCOMPARE(brush(QPalette::Disabled), blue);
        QCOMPARE(brush(QPalette::Inactive), red);
    }
}

void TestPalette::withoutAGroupAllAreSet()
{
    Palette palette;
    palette.setBrush(ColourRole::Error, red);
    palette.setBrush(QPalette::Mid, blue);
    for (const QPalette::ColorGroup group : allGroups) {
        QCOMPARE(palette.brush(group, ColourRole::Error), red);
        QCOMPARE(palette.brush(group, QPalette::Mid), blue);
    }
}

void TestPalette::allGroupsCanBeNamed()
{
    Palette palette;
    palette.setBrush(QPalette::All, ColourRole::Error, red);
    palette.setBrush(QPalette::All, QPalette::Mid, blue);
    for (const QPalette::ColorGroup group : allGroups) {
        QCOMPARE(palette.brush(group, ColourRole::Error), red);
        QCOMPARE(palette.brush(group, QPalette::Mid), blue);
    }
}

void TestPalette::aColourBecomesASolidBrush()
{
    Palette palette;
    palette.setBrush(ColourRole::Error, QColor(Qt::red));
    palette.setBrush(QPalette::Inactive, QPalette::Mid, QColor(Qt::blue));
    QCOMPARE(palette.brush(QPalette::Active, ColourRole::Error), QBrush(Qt::red, Qt::SolidPattern));
    QCOMPARE(palette.colour(QPalette::Active, ColourRole::Error), QColor(Qt::red));
    QCOMPARE(palette.brush(QPalette::Inactive, QPalette::Mid), QBrush(Qt::blue, Qt::SolidPattern));
}

void TestPalette::theCurrentGroupFollowsThePalette()
{
    Palette palette;
    palette.setBrush(QPalette::Active, ColourRole::Error, red);
    palette.setBrush(QPalette::Disabled, ColourRole::Error, blue);
    QCOMPARE(palette.brush(QPalette::Current, ColourRole::Error), red);
    palette.setCurrentColorGroup(QPalette::Disabled);
    QCOMPARE(palette.brush(QPalette::Current, ColourRole::Error), blue);
    palette.setBrush(QPalette::Current, ColourRole::Error, green);
    QCOMPARE(palette.brush(QPalette::Disabled, ColourRole::Error), green);
    QCOMPARE(palette.brush(QPalette::Active, ColourRole::Error), red);
}

void TestPalette::whatIsNoRoleIsIgnored()
{
    UserPalette palette;
    palette.setBrush(ColourRole::NColourRoles, red);
    palette.setBrush(QPalette::NColorGroups, ColourRole::Frame, red);
    QVERIFY(palette.setMask().none());
    palette.setBrush(ColourRole::Frame, red);
    QCOMPARE(palette.brush(QPalette::Active, ColourRole::NColourRoles), QBrush());
    QCOMPARE(palette.brush(QPalette::Active, ColourRole(-1)), QBrush());
    QCOMPARE(palette.brush(QPalette::NColorGroups, ColourRole::Frame), QBrush());
}

void TestPalette::theMaskIsGroupMajor()
{
    QCOMPARE(ColourRoleMask().size(), std::size_t(84));
    for (const QPalette::ColorGroup group : allGroups)
        for (int role = 0; role < colourRoleCount; ++role) {
            UserPalette palette;
            palette.setBrush(group, ColourRole(role), red);
            QCOMPARE(palette.setMask().count(), std::size_t(1));
            QVERIFY(palette.setMask().test(bit(group, ColourRole(role))));
        }
}

void TestPalette::aCopyIsDetachedByAWrite()
{
    UserPalette original;
    original.setBrush(ColourRole::Frame, red);
    UserPalette copy = original;
    // Shared until then: one and the same brush.
    QCOMPARE(&copy.brush(QPalette::Active, ColourRole::Frame),
             &original.brush(QPalette::Active, ColourRole::Frame));

    copy.setBrush(ColourRole::Frame, blue);
    copy.setBrush(ColourRole::TabBase, blue);

    QCOMPARE(original.brush(QPalette::Active, ColourRole::Frame), red);
    QCOMPARE(original.brush(QPalette::Active, ColourRole::TabBase), QBrush());
    QCOMPARE(original.setMask().count(), std::size_t(3));
    QCOMPARE(copy.brush(QPalette::Active, ColourRole::Frame), blue);
}

void TestPalette::aMovedFromPaletteIsUsable()
{
    UserPalette source;
    source.setBrush(ColourRole::Frame, red);
    const UserPalette target = std::move(source);
    QCOMPARE(target.brush(QPalette::Active, ColourRole::Frame), red);

    UserPalette other;
    other.setBrush(ColourRole::Frame, blue);
    QCOMPARE(source.resolve(other).brush(QPalette::Active, ColourRole::Frame), blue);
    source = std::move(other);
    QCOMPARE(source.brush(QPalette::Active, ColourRole::Frame), blue);
    QVERIFY(other.setMask().none());
}

void TestPalette::equalityLooksAtBothFamilies()
{
    Palette first;
    Palette second = first;
    QVERIFY(first == second);
    second.setBrush(QPalette::Mid, red);
    QVERIFY(first != second);
    first.setBrush(QPalette::Mid, red);
    QVERIFY(first == second);
    second.setBrush(ColourRole::Frame, red);
    QVERIFY(first != second);
    first.setBrush(ColourRole::Frame, red);
    QVERIFY(first == second);
}

void TestPalette::equalityLooksAtMaskAndBrushes()
{
    UserPalette unset;
    UserPalette emptyBrushSet;
    emptyBrushSet.setBrush(ColourRole::Frame, QBrush());
    QVERIFY(unset != emptyBrushSet); // equal brushes, other mask
    UserPalette redFrame;
    redFrame.setBrush(ColourRole::Frame, red);
    QVERIFY(redFrame != emptyBrushSet); // equal mask, other brushes
    emptyBrushSet.setBrush(ColourRole::Frame, red);
    QVERIFY(redFrame == emptyBrushSet);
    QVERIFY(unset == UserPalette());
}

void TestPalette::resolvingWithNothingSetShowsTheOtherAndStaysUnset()
{
    UserPalette other;
    other.setBrush(ColourRole::Frame, red);
    const UserPalette result = UserPalette().resolve(other);
    QCOMPARE(result.brush(QPalette::Active, ColourRole::Frame), red);
    QVERIFY(result.setMask().none());
    QVERIFY(result != other);
}

void TestPalette::resolvingEqualPalettesGivesTheOther()
{
    UserPalette first;
    first.setBrush(ColourRole::Frame, red);
    UserPalette second;
    second.setBrush(ColourRole::Frame, red);
    const UserPalette result = first.resolve(second);
    QVERIFY(result == second);
    QCOMPARE(&result.brush(QPalette::Active, ColourRole::Frame),
             &second.brush(QPalette::Active, ColourRole::Frame));
}

void TestPalette::resolvingTakesWhatIsUnsetFromTheOther()
{
    UserPalette own;
    own.setBrush(QPalette::Active, ColourRole::Frame, red);
    UserPalette other;
    other.setBrush(ColourRole::Frame, blue);
    other.setBrush(ColourRole::TabBase, green);

    const UserPalette result = own.resolve(other);

    QCOMPARE(result.brush(QPalette::Active, ColourRole::Frame), red);
    QCOMPARE(result.brush(QPalette::Disabled, ColourRole::Frame), blue);
    QCOMPARE(result.brush(QPalette::Inactive, ColourRole::TabBase), green);
    QCOMPARE(result.brush(QPalette::Active, ColourRole::Error), QBrush());
    QVERIFY(result.setMask() == (own.setMask() | other.setMask()));
}

void TestPalette::resolvingLeavesBothAsTheyWere()
{
    UserPalette own;
    own.setBrush(ColourRole::Frame, red);
    UserPalette other;
    other.setBrush(ColourRole::TabBase, green);
    const UserPalette ownBefore = own;
    const UserPalette otherBefore = other;

    const UserPalette result = own.resolve(other);

    QVERIFY(result != own);
    QVERIFY(own == ownBefore);
    QVERIFY(other == otherBefore);
    QCOMPARE(own.brush(QPalette::Active, ColourRole::TabBase), QBrush());
    // Also against one that holds no brushes at all.
    QVERIFY(own.resolve(UserPalette()) == own);
}

void TestPalette::resolvingAPaletteDoesBothFamilies()
{
    Palette own;
    own.setBrush(QPalette::Mid, red);
    own.setBrush(ColourRole::Frame, red);
    Palette other;
    other.setBrush(QPalette::Mid, blue);
    other.setBrush(QPalette::Link, blue);
    other.setBrush(ColourRole::Frame, blue);
    other.setBrush(ColourRole::TabBase, blue);

    const Palette result = own.resolve(other);

    QCOMPARE(result.brush(QPalette::Active, QPalette::Mid), red);
    QCOMPARE(result.brush(QPalette::Active, QPalette::Link), blue);
    QCOMPARE(result.brush(QPalette::Active, ColourRole::Frame), red);
    QCOMPARE(result.brush(QPalette::Active, ColourRole::TabBase), blue);
}

void TestPalette::aUserPaletteTravelsInAVariant()
{
    UserPalette palette;
    palette.setBrush(ColourRole::Frame, red);
    const QVariant variant = QVariant::fromValue(palette);
    QCOMPARE(variant.typeName(), "Vireling::UserPalette");
    QVERIFY(variant.value<UserPalette>() == palette);
}

QTEST_MAIN(TestPalette)
#include "tst_palette.moc"
