#include "ranvel/app/BottomBar.h"

namespace ranvel {

BottomBar::BottomBar(QWidget* parent) : QTabBar(parent)
{
    setObjectName("bBar");
    setShape(QTabBar::RoundedSouth);
    setDrawBase(true);
    setExpanding(false);
    setAccessibleName("Topics");
    connect(this, &QTabBar::tabBarClicked, this, [this](int index) {
        if (index >= 0) emit TopicClicked(index);
    });
}

void BottomBar::Clear()
{
    const QSignalBlocker quiet(this);
    while (count() > 0) removeTab(count() - 1);
}

void BottomBar::AddTab(const QString& caption)
{
    const QSignalBlocker quiet(this);
    addTab(caption);
}

}  // namespace ranvel
