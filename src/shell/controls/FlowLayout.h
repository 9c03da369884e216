#pragma once

#include <vector>

#include <QtWidgets/QLayout>

namespace orlenta::shell {

/// Lays out widgets like words, in the reading direction, and wraps them into rows. Uses the same spacing between
/// widgets and between rows.
class FlowLayout final : public QLayout {
    Q_OBJECT
public:
    explicit FlowLayout(QWidget *parent = nullptr);
    ~FlowLayout() override;

    void addItem(QLayoutItem *item) override;
    [[nodiscard]] int count() const override;
    [[nodiscard]] QLayoutItem *itemAt(int index) const override;
    QLayoutItem *takeAt(int index) override;

    [[nodiscard]] Qt::Orientations expandingDirections() const override;
    [[nodiscard]] bool hasHeightForWidth() const override;
    [[nodiscard]] int heightForWidth(int width) const override;
    /// The size with all items in one row.
    [[nodiscard]] QSize sizeHint() const override;
    /// The size of the widest item.
    [[nodiscard]] QSize minimumSize() const override;
    void setGeometry(const QRect &rect) override;

private:
    enum class Place { Measure, Set };

    int flow(const QRect &rect, Place place) const;

    std::vector<QLayoutItem *> m_items;
};

} // namespace orlenta::shell
