// The tab strip along the main window's foot: one tab a topic, in the
// order of the topic list. A click asks for that topic; nothing else
// depends on its insides.
#pragma once

#include <QTabBar>

namespace ranvel {

class BottomBar : public QTabBar {
    Q_OBJECT
public:
    explicit BottomBar(QWidget* parent = nullptr);
    void Clear();
    void AddTab(const QString& caption);

signals:
    // The user clicked the tab of a topic.
    void TopicClicked(int index);
};

}  // namespace ranvel
