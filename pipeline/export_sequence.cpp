#include "pipeline/export_sequence.h"

#include "host/attempt.h"
#include "host/files.h"
#include "host/text.h"
#include "package/scene_package.h"
#include "pipeline/export_panel.h"
#include "pipeline/fbx_export.h"
#include "pipeline/job_name.h"
#include "pipeline/material_names.h"
#include "pipeline/scene_scripts.h"
#include "pipeline/service_address.h"
#include "pipeline/texture_collection.h"
#include "pipeline/vertex_color_bake.h"
#include "pipeline/vray_conversion.h"
#include "service/account.h"
#include "service/jobs.h"

#include <optional>

namespace brimwave {
namespace {

constexpr wchar_t caption[] = L"Brimwave Platform";

constexpr wchar_t bakeQuestion[] =
    L"WARNING!\n\n"
    L"The scene geometry will be baked:\n"
    L"  - Ungroup all groups\n"
    L"  - Convert to Editable Poly\n"
    L"  - Reset XForm\n"
    L"  - Convert to Editable Poly again\n\n"
    L"Modifier stacks are collapsed. These operations modify the scene and cannot be undone.\n"
    L"Do not save the scene after export!\n\n"
    L"Continue?";

/// The token, when the service accepts it; then the panel shows its balance.
std::optional<std::wstring> AcceptedToken(ExportPanel& panel) {
    std::wstring token(Trimmed(panel.Token()));
    if (token.empty()) {
        panel.ShowMessage(L"Invalid token.\nEnter your token from " + ServiceDashboardAddress(),
                          caption, MessageIcon::None);
        return std::nullopt;
    }
    const BalanceResult account = FetchBalance(ServiceBaseAddress(), token);
    if (account.ok) {
        panel.SetBalanceText(FormatBalanceText(account));
        return token;
    }
    panel.ShowMessage(account.IsTokenRefused() ? RefusedTokenText()
                                               : L"Cannot connect to server:\n" + account.error,
                      caption, MessageIcon::None);
    return std::nullopt;
}

/// The Exchange Folder as typed, when something stands at that path.
std::optional<std::wstring> ExistingFolder(ExportPanel& panel) {
    std::wstring folder = panel.ExchangeFolder();
    if (!folder.empty() && PathExists(folder))
        return folder;
    panel.ShowMessage(folder.empty() ? L"Select an Exchange Folder."
                                     : L"Folder does not exist:\n" + folder,
                      caption, MessageIcon::None);
    return std::nullopt;
}

/// Deletes a file when it goes.
class FileRemover {
  public:
    explicit FileRemover(std::wstring path) : path_(std::move(path)) {}
    FileRemover(const FileRemover&) = delete;
    FileRemover& operator=(const FileRemover&) = delete;
    ~FileRemover() {
        Attempt([this] { RemoveFile(path_); });
    }

  private:
    std::wstring path_;
};

/// One export, from the moment at which nothing stands in its way. Each stage announces itself
/// on the panel; one that returns false, or nothing, has shown why the run ends there.
class ExportRun {
  public:
    ExportRun(ExportPanel& panel, std::wstring token, std::wstring exchangeFolder)
        : panel_(panel), token_(std::move(token)), exchangeFolder_(std::move(exchangeFolder)) {}

    void Run() {
        panel_.EnableExport(false);
        panel_.SetJobLabel(L"");
        const SplineTwins twins;
        if (!GeometryBaked()) {
            panel_.EnableExport(true);
            panel_.SetStatus(0, L"Ready.", false);
            return;
        }
        MakeJobFolder();
        BakeVertexColors();
        if (VRayConverted())
            if (const std::optional<int> objects = WriteJob())
                ShowOutcome(Submit(), *objects);
        panel_.EnableExport(true);
    }

  private:
    /// False when the user refuses a bake that the panel asks for.
    bool GeometryBaked() {
        if (!panel_.BakeGeometry())
            return true;
        if (!panel_.Confirm(bakeQuestion, L"Bake Geometry"))
            return false;
        BakeGeometry();
        return true;
    }

    void MakeJobFolder() {
        panel_.SetStatus(8, L"Preparing job folder...", true);
        jobFolderName_ = NewJobFolderName();
        jobFolder_ = exchangeFolder_ + L"\\" + jobFolderName_;
        MakeFolder(jobFolder_);
        MakeFolder(jobFolder_ + L"\\textures");
    }

    void BakeVertexColors() {
        panel_.SetStatus(12, L"Baking MultiTexture vertex colors...", true);
        BakeMultiTextureVC();
    }

    bool VRayConverted() {
        panel_.SetStatus(15, L"Checking for V-Ray materials...", true);
        const VRayConversionResult result = ConvertVRayMaterials();
        if (result.attempted && result.ok)
            panel_.SetStatus(
                17, L"V-Ray converted: " + std::to_wstring(result.converted) + L" objects", true);
        if (!result.attempted || result.ok || result.error.empty())
            return true;
        panel_.ShowError(L"V-Ray conversion failed:\n" + result.error);
        return false;
    }

    /// FBX, textures and package, while the materials carry the names that all of them use.
    /// Gives the number of objects in the package.
    std::optional<int> WriteJob() {
        panel_.SetStatus(20, L"Deduplicating material names...", true);
        UniqueMaterialNames names;

        panel_.SetStatus(25, L"Exporting FBX...", true);
        std::wstring failure;
        if (!ExportFbx(jobFolder_ + L"\\" + SceneJobName() + L".fbx", failure)) {
            names.Restore();
            panel_.ShowError(failure);
            return std::nullopt;
        }
        GatherTextures();

        panel_.SetStatus(65, L"Building Package...", true);
        const PackageResult package = WriteScenePackage(PackagePath());
        names.Restore();
        if (!package.success) {
            panel_.ShowError(L"Package export returned failure.");
            return std::nullopt;
        }
        panel_.SetStatus(78, L"Package ready. Objects: " + std::to_wstring(package.objectCount),
                         true);
        return package.objectCount;
    }

    void GatherTextures() {
        panel_.SetStatus(40, L"Collecting textures...", true);
        const TextureCollectResult textures = CollectTextures(jobFolder_);
        std::wstring text = L"Textures: " + std::to_wstring(textures.copied);
        if (!textures.missing.empty())
            text += L"  (" + std::to_wstring(textures.missing.size()) + L" missing)";
        panel_.SetStatus(55, text, true);
    }

    [[nodiscard]] HttpResult Submit() {
        panel_.SetStatus(88, L"Sending to server...", true);
        const wchar_t* const target = panel_.OlderBlenderTarget() ? L"5.1" : L"5.2";
        const FileRemover package(PackagePath());
        return SubmitJob(ServiceBaseAddress(), PackagePath(), token_, jobFolderName_, target);
    }

    void ShowOutcome(const HttpResult& answer, int objects) {
        if (answer.ok) {
            panel_.SetStatus(100, L"Done  OK  Objects: " + std::to_wstring(objects), false);
            panel_.SetJobLabel(L"Job: " + jobFolderName_);
        } else if (answer.text.find(L"insufficient balance") != std::wstring::npos) {
            panel_.SetStatus(100, L"Insufficient balance.", false);
            panel_.ShowMessage(L"Insufficient credits.\nTop up your balance at " +
                                   ServiceDashboardAddress(),
                               L"Brimwave Platform - Balance", MessageIcon::None);
        } else {
            ShowSendFailure(answer);
        }
    }

    void ShowSendFailure(const HttpResult& answer) {
        const std::wstring reason =
            answer.status < 1 ? L"no response" : L"HTTP " + std::to_wstring(answer.status);
        panel_.SetStatus(100, L"Send failed (" + reason + L").", false);
        panel_.ShowMessage(
            L"The job was NOT accepted by the server (" + reason + L").\n\n" + answer.text +
                L"\n\nNothing was submitted - check your connection/token and try again.",
            L"Brimwave Platform - Send Failed", MessageIcon::Error);
    }

    [[nodiscard]] std::wstring PackagePath() const { return jobFolder_ + L"\\1.json"; }

    ExportPanel& panel_;
    std::wstring token_;
    std::wstring exchangeFolder_;
    std::wstring jobFolderName_;
    std::wstring jobFolder_;
};

} // namespace

void ExportAndSend(ExportPanel& panel) {
    const bool finished = Attempt([&] {
        std::optional<std::wstring> token = AcceptedToken(panel);
        if (!token)
            return;
        std::optional<std::wstring> folder = ExistingFolder(panel);
        if (folder)
            ExportRun(panel, *std::move(token), *std::move(folder)).Run();
    });
    if (finished)
        return;
    // Out of memory, or the panel itself failed. The scene has been put back by now.
    Attempt([&] { panel.ShowError(L"The export stopped at an unexpected error."); });
    Attempt([&] { panel.EnableExport(true); });
}

} // namespace brimwave
