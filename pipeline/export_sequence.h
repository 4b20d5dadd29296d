#pragma once

namespace brimwave {

class ExportPanel;

/// Runs Export & Send on the open scene, from the token check to the submitted job. Blocks the
/// calling thread (the host's user-interface thread). Every outcome is shown on the panel;
/// spline twins and material names are put back on every path; nothing is thrown.
void ExportAndSend(ExportPanel& panel);

} // namespace brimwave
