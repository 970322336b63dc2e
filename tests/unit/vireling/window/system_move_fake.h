#pragma once

/**
 * Stands in for QWindow::startSystemMove() in the program it is linked into: the
 * offscreen platform has no window system that could move anything.
 */
struct SystemMoveFake
{
    int calls = 0;
    bool answer = true;

    static SystemMoveFake &instance();
};
