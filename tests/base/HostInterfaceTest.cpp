#include "base/HostInterface.h"

#include <gtest/gtest.h>

#include <climits>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "base/CEvent.h"
#include "base/CObject.h"
#include "base/CProgressCtrl.h"
#include "base/LoadStatus.h"

namespace {

class Recorder : public CHostInterface {
 public:
  int OnAfxMessageBox(const CString& sText, UINT nType, UINT nIDHelp) override {
    m_boxes.push_back("afx:" + std::string(sText.View()) + ":" + std::to_string(nType) + ":" + std::to_string(nIDHelp));
    return 7;
  }
  int OnMessageBox(HWND hOwner, const CString& sText, const CString& sCaption, UINT nType) override {
    m_boxes.push_back("box:" + std::string(sText.View()) + ":" + std::string(sCaption.View()) + ":" +
                      std::to_string(nType) + (hOwner ? ":owner" : ""));
    return IDOK;
  }
  std::vector<std::string> m_boxes;
};

TEST(HostInterface, ShowsBoxesThroughTheThreadsHost) {
  Recorder outer;
  Recorder inner;
  {
    const CHostInterfaceScope outerScope(outer);
    EXPECT_EQ(AfxMessageBox("one"), 7);
    {
      const CHostInterfaceScope innerScope(inner);
      MessageBoxA(nullptr, "two", "caption", MB_OK | MB_ICONEXCLAMATION);
    }
    AfxMessageBox("three", MB_ICONEXCLAMATION, 5);
    ::testing::internal::CaptureStderr();
    std::thread([] { EXPECT_EQ(AfxMessageBox("another thread"), IDOK); }).join();
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "another thread\n");
  }
  EXPECT_EQ(outer.m_boxes, (std::vector<std::string>{"afx:one:0:0", "afx:three:48:5"}));
  EXPECT_EQ(inner.m_boxes, std::vector<std::string>{"box:two:caption:48"});
}

TEST(HostInterface, WritesToStandardErrorWithoutAHost) {
  ::testing::internal::CaptureStderr();
  EXPECT_EQ(AfxMessageBox("level %s%n over"), IDOK);
  EXPECT_EQ(MessageBoxA(nullptr, "No definition", "WARNING", MB_OK), IDOK);
  CHostInterface plain;
  const CHostInterfaceScope scope(plain);
  EXPECT_EQ(AfxMessageBox("plain"), IDOK);
  EXPECT_EQ(MessageBoxA(nullptr, "plain box", "", MB_OK), IDOK);
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "level %s%n over\nNo definition\nplain\nplain box\n");
}

TEST(HostInterface, LetsAHostRaise) {
  struct Refuser : CHostInterface {
    int OnAfxMessageBox(const CString&, UINT, UINT) override { throw std::runtime_error("no"); }
  } refuser;
  EXPECT_THROW(
      {
        const CHostInterfaceScope scope(refuser);
        AfxMessageBox("x");
      },
      std::runtime_error);
  ::testing::internal::CaptureStderr();
  AfxMessageBox("behind the scope");
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "behind the scope\n");
}

TEST(CProgressCtrl, ReceivesPositions) {
  struct Control : CProgressCtrl {
    void OnSetPos(int nPos) override {
      CProgressCtrl::OnSetPos(nPos);
      m_positions.push_back(nPos);
    }
    std::vector<int> m_positions;
  } control;
  EXPECT_EQ(PBM_SETPOS, 1026u);
  for (const WPARAM nPos : {WPARAM{40}, WPARAM{100}, WPARAM{0}, ~WPARAM{0}}) {
    SendMessageA(control.GetSafeHwnd(), PBM_SETPOS, nPos, 0);
  }
  EXPECT_EQ(control.m_positions, (std::vector{40, 100, 0, INT_MAX}));
  EXPECT_EQ(control.GetPos(), INT_MAX);
  SendMessageA(control.GetSafeHwnd(), PBM_SETPOS + 1, 50, 0);
  SendMessageA(nullptr, PBM_SETPOS, 50, 0);
  EXPECT_EQ(control.m_positions.size(), 4u);
}

TEST(CEvent, IsNotSignalledAtFirst) {
  CEvent event;
  EXPECT_FALSE(event.IsSignalled());
  EXPECT_TRUE(event.SetEvent());
  EXPECT_TRUE(event.IsSignalled());
  EXPECT_TRUE(event.ResetEvent());
  EXPECT_FALSE(event.IsSignalled());
}

TEST(CObject, TellsItsClass) {
  struct Thing : CObject {
  } thing;
  EXPECT_STREQ(thing.GetRuntimeClass()->m_lpszClassName, "CObject");
  EXPECT_EQ(thing.GetRuntimeClass()->m_nObjectSize, static_cast<int>(sizeof(CObject)));
  thing.AssertValid();
  thing.Dump();
  static_assert(!std::is_copy_constructible_v<CObject> && !std::is_copy_assignable_v<CObject>);
}

TEST(LoadStatus, KeepsTheFirstFault) {
  laminate::LoadStatus status;
  EXPECT_TRUE(status.IsOk());
  status.Set(laminate::LoadStatus::Result::notWellFormed, "f", 1, 2, "text");
  status.Set(laminate::LoadStatus::Result::cannotOpen, "g", 3, 4, "later");
  EXPECT_FALSE(status.IsOk());
  EXPECT_EQ(status.m_result, laminate::LoadStatus::Result::notWellFormed);
  EXPECT_EQ(status.m_sFile, "f");
  EXPECT_EQ(status.m_nLine, 1);
  EXPECT_EQ(status.m_nColumn, 2);
  EXPECT_EQ(status.m_sText, "text");
}

}  // namespace
