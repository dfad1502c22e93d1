// SPDX-License-Identifier: MIT
#include "attention.h"

#include <QApplication>

void Attention::want()
{
    QApplication::alert(&window);
    emit wanted();
}
