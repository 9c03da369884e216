#pragma once

#include <vector>

#include <QtWidgets/QLayout>

namespace orlenta::shell {

/// Lays widgets out in reading direction like words, in as many rows as the width asks for. Its spacing stands between
/// neighbours and between rows alike.
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
    /// All in one row.
    [[nodiscard]] QSize sizeHint() const override;
    /// The widest item alone.
    [[nodiscard]] QSize minimumSize() const override;
    void setGeometry(const QRect &rect) override;

private:
    enum class Place { Measure, Set };

    int flow(const QRect &rect, Place place) const;

    std::vector<QLayoutItem *> m_items;
};

} // namespace orlenta::shell
