#pragma once
// The core interface.
#include "inode.h"
#include "log.h"
#include "tab.h"

/// The materials that scene nodes use.
class MtlBaseLib {
  public:
    virtual ~MtlBaseLib() = default;
    virtual int Count() = 0;
    virtual MtlBase* operator[](int i) = 0;
};

class Interface {
  public:
    virtual ~Interface() = default;
    virtual TimeValue GetTime() = 0;
    virtual INode* GetRootNode() = 0;
    /// File name of the scene without a folder; empty while it was never saved.
    virtual MSTR& GetCurFileName() = 0;
    /// Full path of the scene; empty while it was never saved.
    virtual MSTR& GetCurFilePath() = 0;
    virtual HWND GetMAXHWnd() const = 0;
    virtual const MCHAR* GetDir(int id) = 0;
    /// Non-zero when the host accepted the export. The exporter is chosen by the extension when
    /// no class is given.
    virtual BOOL ExportToFile(const MCHAR* name, BOOL suppressPrompts = FALSE, DWORD options = 0,
                              Class_ID* exporterID = nullptr) = 0;

    virtual Texmap* GetEnvironmentMap() = 0;
    virtual BOOL GetUseEnvironmentMap() = 0;
    virtual Point3 GetBackGround(TimeValue t, Interval& valid) = 0;
    virtual Point3 GetAmbient(TimeValue t, Interval& valid) = 0;
    virtual ReferenceTarget* GetCurrentRenderer(bool createDefault = true) = 0;

    virtual INode* GetINodeByName(const MCHAR* name) = 0;
    virtual INode* GetINodeByHandle(ULONG handle) = 0;
    virtual int GetSelNodeCount() = 0;
    virtual INode* GetSelNode(int i) = 0;
    virtual void SelectNode(INode* node, int clearSelection = 1) = 0;
    virtual void DeleteNode(INode* node, BOOL redraw = TRUE, BOOL overrideSlaves = FALSE) = 0;
    virtual MtlBaseLib* GetSceneMtls() = 0;

    virtual LogSys* Log() = 0;
    virtual float GetRendImageAspect() = 0;
    virtual int GetRendWidth() = 0;
    virtual int GetRendHeight() = 0;
    virtual void ForceCompleteRedraw(BOOL force = TRUE) = 0;

    /// A modeless dialog gets its tab and arrow keys only while it is registered.
    virtual void RegisterDlgWnd(HWND dialog) = 0;
    virtual int UnRegisterDlgWnd(HWND dialog) = 0;
};

Interface* GetCOREInterface();

/// While accelerators are on, the host takes single letters as shortcuts before any edit box
/// sees them. Calls are counted.
void DisableAccelerators();
void EnableAccelerators();
BOOL AcceleratorsEnabled();
