#pragma once

#include <QObject>
#include <string>

#include "ui/skins/skin.h"

namespace norvelis::ui {

/// The effective skin, which the frame and every screen are drawn from, and how it changes while they are
/// open. Nothing is drawn again by it: whoever draws listens to its signals.
class CurrentSkin : public QObject {
    Q_OBJECT

  public:
    explicit CurrentSkin(AppState& app);

    const Skin& Get() const { return skin_; }

    /// Reads gSkinScheme: the shared pictures and the frame's background. False, and the skin as it was, when
    /// it cannot be read whole. Without gUseSkins: the plain look.
    bool LoadSkins();
    /// Reads the colors alone.
    void LoadColors();
    /// Gives what was read to the platform's controls and the frame.
    void Apply();

    /// Makes another skin the effective one. One that cannot be loaded is reported in a box, the former one
    /// stays, and the result is false.
    bool ChangeTo(const std::string& name);
    /// Reports that a skin cannot be loaded and takes the former one (none without `use`) again.
    void RevertTo(const std::string& scheme, bool use);
    /// The colors of the skin were written to its file.
    void ColorsWritten() { emit ColorsChanged(); }

  signals:
    void Applied();
    void ColorsChanged();
    void SkinChanged();

  private:
    AppState& app_;
    Skin skin_;
};

}  // namespace norvelis::ui
