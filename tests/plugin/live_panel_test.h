#pragma once
#include "simhost/files/scene_file.h"
#include "tests/plugin/panel_host.h"
#include "tests/service/live/live_service.h"

#include <gtest/gtest.h>

#include <optional>

namespace brimwave::testing {

/// A test of the panel against the local service: a host with the plug-in loaded and the scene
/// open. Skipped when no service is running.
class LivePanelTest : public LiveTest {
  protected:
    void SetUp() override {
        LiveTest::SetUp();
        if (IsSkipped())
            return;
        SetEnvironmentVariableW(L"BRIMWAVE_SERVICE_URL", service_.https.c_str());
        if (!Scene().empty()) {
            const simhost::LoadResult loaded = simhost::LoadSceneText(Scene());
            ASSERT_TRUE(loaded) << loaded.error;
        }
        host_.emplace(settings_.Path().wstring());
        Start();
    }
    void TearDown() override {
        host_.reset();
        LiveTest::TearDown();
    }

    /// The scene file's text; empty: whatever scene is open.
    [[nodiscard]] virtual std::string_view Scene() const { return {}; }
    /// What each test begins with.
    virtual void Start() {}

    ScratchFolder settings_;
    ScratchFolder exchange_;
    std::optional<PanelHost> host_;
};

} // namespace brimwave::testing
