#include "system_move_fake.h"

#include <QWindow>

SystemMoveFake &SystemMoveFake::instance()
{
    static SystemMoveFake fake;
    return fake;
}

bool QWindow::startSystemMove()
{
    ++SystemMoveFake::instance().calls;
    return SystemMoveFake::instance().answer;
}
