#include "store/screens/definitionwindow.h"

#include "controls/binding.h"
#include "controls/gridview.h"
#include "controls/keyedbutton.h"
#include "controls/transferwidgets.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QScreen>
#include <QStackedLayout>
#include <QVBoxLayout>

#include <algorithm>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr int twipsPerPixel = 15;
constexpr int wishedHeight = 420;
constexpr QSize roomForItsFrame(16, 40);

int listWidth(const Definition &definition)
{
    int twips = 0;
    for (const DefinitionColumn &column : definition.grid)
        twips += column.twips;
    return qBound(460, twips / twipsPerPixel + 80, 1046);
}

} // namespace

DefinitionWindow::DefinitionWindow(Program &program, const Definition &definition, QWidget *parent)
    : QDialog(parent)
    , m_screen(program, definition)
    , m_listFrame(listFrame())
    , m_recordFrame(recordFrame())
{
    setObjectName(definition.screen);
    setWindowTitle(definition.caption);
    auto *column = new QVBoxLayout(this);
    if (definition.sideValue)
        column->addWidget(sideValue(*definition.sideValue));
    auto *spot = new QStackedLayout;
    spot->setStackingMode(QStackedLayout::StackAll);
    spot->addWidget(m_listFrame);
    spot->addWidget(m_recordFrame);
    column->addLayout(spot, 1);
    auto *closing = new QHBoxLayout;
    closing->addStretch();
    closing->addWidget(
        button(u"chameleonButton8"_s, u"Kapat"_s, u"Ctrl+W"_s, &DefinitionWindow::kapat));
    column->addLayout(closing);
    connect(&m_screen.kayitta, &CheckField::changed, this, &DefinitionWindow::showFrame);
    connect(&m_screen.l1, &QAbstractItemModel::modelReset, this, &DefinitionWindow::chooseRow);
    connect(m_list->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &DefinitionWindow::showChoice);
    m_screen.yukle();
    const QSize wished = sizeHint().expandedTo({listWidth(definition), wishedHeight});
    setFixedSize(wished.boundedTo(QWidget::screen()->availableSize() - roomForItsFrame));
    showFrame();
}

QPushButton *DefinitionWindow::button(const QString &name, const QString &caption,
                                      const QString &keys, void (DefinitionWindow::*action)())
{
    auto *made = dialogButton(name, caption, keys);
    made->setAutoDefault(false);
    connect(made, &QAbstractButton::clicked, this, action);
    return made;
}

QGroupBox *DefinitionWindow::listFrame()
{
    const Definition &definition = m_screen.definition();
    auto *frame = new QGroupBox(definition.listCaption);
    frame->setObjectName(u"fr1"_s);
    m_list = new GridView(m_screen.l1, u"l1"_s);
    m_list->setAccessibleName(definition.listCaption);
    m_list->setSelectionMode(QAbstractItemView::SingleSelection);
    connect(m_list, &QAbstractItemView::doubleClicked, this, &DefinitionWindow::degistir);
    auto *column = new QVBoxLayout(frame);
    column->addWidget(m_list, 1);
    auto *row = new QHBoxLayout;
    row->addWidget(button(u"chameleonButton1"_s, u"Yeni"_s, u"Ctrl+N"_s, &DefinitionWindow::yeni));
    m_ofARow = {button(u"chameleonButton2"_s, u"Değiştir"_s, u"F2"_s, &DefinitionWindow::degistir),
                button(u"chameleonButton3"_s, u"Sil"_s, u"Del"_s, &DefinitionWindow::sil)};
    for (QPushButton *each : m_ofARow)
        row->addWidget(each);
    row->addStretch();
    column->addLayout(row);
    return frame;
}

QGroupBox *DefinitionWindow::recordFrame()
{
    auto *frame = new QGroupBox(u"Kayıt"_s);
    frame->setObjectName(u"fr2"_s);
    auto *column = new QVBoxLayout(frame);
    auto *form = new QFormLayout;
    column->addLayout(form);
    const QList<DefinitionField> &fields = m_screen.definition().fields;
    for (int i = 0; i < fields.size(); ++i) {
        const DefinitionField &field = fields[i];
        if (field.kind == DefinitionField::Check) {
            auto *box = new QCheckBox(field.label);
            box->setObjectName(field.name);
            bind(box, m_screen.check(i));
            form->addRow(QString(), box);
            continue;
        }
        auto *edit = new QLineEdit;
        edit->setObjectName(field.name);
        bind(edit, m_screen.text(i));
        connect(edit, &QLineEdit::returnPressed, this, &DefinitionWindow::kaydet);
        if (field.kind == DefinitionField::HiddenText) {
            edit->setParent(frame);
            edit->hide();
        } else {
            edit->setAccessibleName(field.label);
            form->addRow(field.label, edit);
        }
    }
    column->addStretch();
    auto *row = new QHBoxLayout;
    auto *save = button(u"chameleonButton7"_s, u"Kaydet"_s, u"Ctrl+S"_s, &DefinitionWindow::kaydet);
    row->addWidget(save);
    row->addWidget(button(u"chameleonButton4"_s, u"İptal"_s, u"Esc"_s, &DefinitionWindow::iptal));
    row->addStretch();
    column->addLayout(row);
    return frame;
}

QWidget *DefinitionWindow::sideValue(const SideValue &value)
{
    auto *panel = new QWidget;
    auto *row = new QHBoxLayout(panel);
    row->setContentsMargins(0, 0, 0, 0);
    auto *edit = new QLineEdit;
    edit->setObjectName(value.name);
    edit->setMaximumWidth(80);
    bind(edit, m_screen.sideValue);
    connect(edit, &QLineEdit::textEdited, this, [this](const QString &text) {
        m_screen.sideValue.setText(text); // the tie follows only behind this signal
        m_screen.sidevaluetyped();
    });
    row->addWidget(labelFor(edit, value.label));
    row->addWidget(edit);
    row->addStretch();
    return panel;
}

void DefinitionWindow::showFrame()
{
    const bool record = m_screen.kayitta.isChecked();
    m_listFrame->setVisible(!record);
    m_recordFrame->setVisible(record);
    if (record)
        m_recordFrame->findChild<QLineEdit *>(m_screen.definition().fields.first().name)
            ->setFocus();
    else
        m_list->setFocus();
}

// A list that is loaded anew keeps its place; a new record is the last one.
void DefinitionWindow::chooseRow()
{
    const auto &failed = m_screen.okunamadi;
    m_list->setEmptyText(failed ? u"Kayıtlar okunamadı: "_s + failed->headline()
                                : u"Kayıt yok. \"Yeni\" ile ekleyin."_s);
    const int last = m_screen.l1.rows() - 1;
    if (last >= 0)
        m_list->selectRow(m_toLast ? last : qMin(m_row, last));
    m_toLast = false;
    showChoice();
}

void DefinitionWindow::showChoice()
{
    const int row = selectedRow();
    if (row >= 0)
        m_row = row;
    for (QPushButton *each : m_ofARow)
        each->setEnabled(row >= 0);
}

int DefinitionWindow::selectedRow() const
{
    const auto selected = m_list->selectionModel()->selectedRows();
    return selected.isEmpty() ? -1 : selected.first().row();
}

void DefinitionWindow::yeni()
{
    m_toLast = true;
    m_screen.yeni();
}

void DefinitionWindow::goTo(const QString &code)
{
    const Definition &definition = m_screen.definition();
    const auto column =
        std::ranges::find(definition.grid, definition.sourceColumn, &DefinitionColumn::column);
    const auto field =
        std::ranges::find(definition.fields, definition.sourceColumn, &DefinitionField::column);
    if (column == definition.grid.end() || field == definition.fields.end())
        return;
    for (int row = 0; row < m_screen.l1.rows(); ++row) {
        if (m_screen.l1.cell(row, static_cast<int>(column - definition.grid.begin())) == code)
            return m_list->selectRow(row);
    }
    yeni();
    m_screen.text(static_cast<int>(field - definition.fields.begin())).setText(code);
}

void DefinitionWindow::degistir()
{
    m_screen.degistir(selectedRow());
}

void DefinitionWindow::sil()
{
    m_screen.sil(selectedRow());
}

void DefinitionWindow::kaydet()
{
    m_screen.kaydet(selectedRow());
}

void DefinitionWindow::iptal()
{
    m_toLast = false;
    m_screen.iptal();
}

void DefinitionWindow::kapat()
{
    m_how = Closing::ByButton;
    reject();
}

void DefinitionWindow::done(int result)
{
    QDialog::done(result);
    Q_EMIT closed(m_how);
}

} // namespace kervan
