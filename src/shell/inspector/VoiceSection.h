#pragma once

#include <QtWidgets/QWidget>

class QKeyEvent;
class QLabel;
class QLineEdit;
class QListView;
class QModelIndex;
class QPushButton;

namespace orlenta::controller {
class ProjectController;
}

namespace orlenta::speech {
class ElevenLabsService;
}

namespace orlenta::shell {

class InspectedLines;
class VoiceListModel;

/// Casts the inspected lines: shows their voice, a search field and the matching voices. In the field, Down goes to the
/// voices, Return casts the first match and Escape clears the search, or leaves the section.
class VoiceSection final : public QWidget {
    Q_OBJECT
public:
    VoiceSection(controller::ProjectController &controller, speech::ElevenLabsService &service, InspectedLines &lines,
                 QWidget *parent = nullptr);

    [[nodiscard]] QLineEdit *searchField() const { return m_search; }
    [[nodiscard]] QListView *voiceList() const { return m_list; }
    /// The height that the list may take if it has voices enough, in pixels. It always shows at least five.
    void setListRoom(int height);

Q_SIGNALS:
    /// The keyboard leaves the section for the script.
    void linesRequested();
    /// The user has no voices yet and wants to connect.
    void accountRequested();
    void localVoicesRequested();

protected:
    void changeEvent(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool handleSearchKey(const QKeyEvent &key);
    bool handleListKey(const QKeyEvent &key);
    void castFirstMatch();
    void leaveSearch();
    void castVoice(const QModelIndex &index);
    void showCast();
    void showAvailability();
    void fitList();

    controller::ProjectController &m_controller;
    speech::ElevenLabsService &m_service;
    InspectedLines &m_lines;
    VoiceListModel *m_model;
    QLabel *m_swatch;
    QLabel *m_castName;
    int m_room = 0;
    QLineEdit *m_search;
    QListView *m_list;
    QLabel *m_message;
    QPushButton *m_connect;
    QPushButton *m_useLocalVoices;
};

} // namespace orlenta::shell
