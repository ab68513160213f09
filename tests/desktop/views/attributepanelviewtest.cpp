#include "desktop/views/attributepanelview.h"

#include <QLineEdit>
#include <QWheelEvent>

#include "desktop/views/qtscrollbar.h"
#include "desktop/views/viewtest.h"

namespace qmrules::desktop {
namespace {

class AttributePanelViewTest : public testing::Test {
 protected:
  AttributePanelViewTest() {
    AddField("Status:", 't');
    AddField("A much longer caption:", 'c');
    AddField("Comment:", 'r');
    AddField("Owner:", 't');
    window.resize(300, 400);
    auto* const column = new QVBoxLayout(&window);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(&panel);
    Activate(window);
  }

  int AddField(const char* caption, char kind) {
    const int index = widgets.AddAttributeFields();
    widgets.lblAttrs(index).SetCaption(caption);
    widgets.txtAttrs(index).SetVisible(kind == 't');
    widgets.cmbAttrs(index).SetVisible(kind == 'c');
    widgets.rtbAttrs(index).SetVisible(kind == 'r');
    return index;
  }

  QWidget& View(const platform::widgets::Widget& model) const { return *focus.ViewOf(model); }

  const shell::StringTable& texts = shell::StringTableFor(shell::Language::English);
  browser::ControlWidgets widgets{texts};
  QWidget window;
  FocusBridge focus{widgets, window};
  int room = 0;
  platform::Subscription resized = widgets.OnPanelResized.Subscribe([this](int rows) { room = rows; });
  AttributePanelView& panel = *new AttributePanelView(focus, widgets, &window);
};

TEST_F(AttributePanelViewTest, TheLabelsAreAsWideAsTheWidestAndTheRestTakesTheWidth) {
  const QWidget& widest = View(widgets.lblAttrs(2));
  EXPECT_EQ(View(widgets.lblAttrs(1)).width(), widest.sizeHint().width());
  EXPECT_GT(View(widgets.txtAttrs(1)).x(), widest.geometry().right());
  EXPECT_EQ(View(widgets.txtAttrs(1)).geometry().right(), panel.width() - 1);
  EXPECT_EQ(View(widgets.txtAttrs(1)).x(), View(widgets.cmbAttrs(2)).x());
}

TEST_F(AttributePanelViewTest, ALongTextTakesThreeRows) {
  const int row = View(widgets.cmbAttrs(2)).y() - View(widgets.txtAttrs(1)).y();
  EXPECT_EQ(View(widgets.txtAttrs(4)).y() - View(widgets.rtbAttrs(3)).y(), 3 * row);
  EXPECT_GT(View(widgets.rtbAttrs(3)).height(), 2 * row);
  EXPECT_EQ(room, (panel.height() + 4) / row);
}

TEST_F(AttributePanelViewTest, TheBarMovesTheContentByRows) {
  const int row = View(widgets.cmbAttrs(2)).y() - View(widgets.txtAttrs(1)).y();
  widgets.vScroll.SetRange(0, 4);
  widgets.vScroll.SetValue(2);
  EXPECT_EQ(View(widgets.txtAttrs(1)).y(), -2 * row);
}

TEST_F(AttributePanelViewTest, TheWheelMovesTheBar) {
  widgets.vScroll.SetRange(0, 4);
  QWheelEvent wheel({5, 5}, panel.mapToGlobal(QPointF(5, 5)), {}, {0, -120}, Qt::NoButton, Qt::NoModifier,
                    Qt::NoScrollPhase, false);
  QCoreApplication::sendEvent(&panel, &wheel);
  EXPECT_EQ(widgets.vScroll.Value(), 1);
}

TEST_F(AttributePanelViewTest, AFieldThatGetsTheFocusComesIntoSight) {
  for (int more = 0; more < 20; ++more) AddField("More:", 't');
  QCoreApplication::processEvents();
  const int rows = widgets.AttributeCount() + 2;
  widgets.vScroll.SetRange(0, rows - room);
  widgets.txtAttrs(24).SetFocus();
  const QWidget& field = View(widgets.txtAttrs(24));
  EXPECT_TRUE(field.hasFocus());
  EXPECT_LE(field.geometry().bottom(), panel.height());
  widgets.txtAttrs(1).SetFocus();
  EXPECT_GE(View(widgets.txtAttrs(1)).y(), 0);
}

TEST_F(AttributePanelViewTest, FieldsMayComeAndGo) {
  widgets.RemoveAttributeFields();
  QCoreApplication::processEvents();
  EXPECT_TRUE(panel.findChildren<QLineEdit*>().isEmpty());
  const int index = AddField("Anew:", 't');
  QCoreApplication::processEvents();
  EXPECT_TRUE(View(widgets.txtAttrs(index)).isVisible());
  EXPECT_EQ(View(widgets.txtAttrs(index)).accessibleName(), "Anew");
}

TEST_F(AttributePanelViewTest, EachFieldIsCalledAsItsLabelIs) {
  EXPECT_EQ(View(widgets.txtAttrs(1)).accessibleName(), "Status");
  EXPECT_EQ(View(widgets.cmbAttrs(2)).accessibleName(), "A much longer caption");
  EXPECT_EQ(View(widgets.rtbAttrs(3)).accessibleName(), "Comment");
}

TEST_F(AttributePanelViewTest, TheTemplateIsNotShown) {
  EXPECT_EQ(focus.ViewOf(widgets.lblAttrs(0)), nullptr);
  EXPECT_EQ(focus.ViewOf(widgets.rtbAttrs(0)), nullptr);
}

}  // namespace
}  // namespace qmrules::desktop
