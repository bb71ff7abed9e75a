#include "drawing/model/defaults.h"

#include <array>
#include <numbers>

namespace norvelis::drawing {

namespace {

constexpr double kPoint = 1.0 / 72;
constexpr double kUpwards = std::numbers::pi / 2;

// clang-format off
constexpr CellDefault kSheet[] = {
    // Which formats a style brings.
    {"EnableLineProps", 1}, {"EnableFillProps", 1}, {"EnableTextProps", 1}, {"HideForApply", 0},
    // Line, fill, shadow.
    {"LineWeight", 0.75 * kPoint}, {"LineColor"}, {"LinePattern", 1}, {"Rounding"}, {"EndArrowSize", 2},
    {"BeginArrow"}, {"EndArrow"}, {"LineCap"}, {"BeginArrowSize", 2}, {"LineColorTrans"}, {"CompoundType"},
    {"FillForegnd", 1}, {"FillBkgnd"}, {"FillPattern", 1}, {"ShdwForegnd"}, {"ShdwPattern"},
    {"FillForegndTrans"}, {"FillBkgndTrans"}, {"ShdwForegndTrans"}, {"ShapeShdwType"}, {"ShapeShdwOffsetX"},
    {"ShapeShdwOffsetY"}, {"ShapeShdwObliqueAngle"}, {"ShapeShdwScaleFactor", 1}, {"ShapeShdwBlur"},
    {"ShapeShdwShow"},
    // Text block.
    {"LeftMargin"}, {"RightMargin"}, {"TopMargin"}, {"BottomMargin"}, {"VerticalAlign", 1}, {"TextBkgnd"},
    {"DefaultTabStop", 0.5}, {"TextDirection"}, {"TextBkgndTrans"},
    // Protection.
    {"LockWidth"}, {"LockHeight"}, {"LockMoveX"}, {"LockMoveY"}, {"LockAspect"}, {"LockDelete"}, {"LockBegin"},
    {"LockEnd"}, {"LockRotate"}, {"LockCrop"}, {"LockVtxEdit"}, {"LockTextEdit"}, {"LockFormat"}, {"LockGroup"},
    {"LockCalcWH"}, {"LockSelect"}, {"LockCustProp"}, {"LockFromGroupFormat"}, {"LockThemeColors"},
    {"LockThemeEffects"}, {"LockThemeConnectors"}, {"LockThemeFonts"}, {"LockThemeIndex"}, {"LockReplace"},
    {"LockVariation"},
    // Miscellaneous.
    {"NoObjHandles"}, {"NonPrinting"}, {"NoCtlHandles"}, {"NoAlignBox"}, {"UpdateAlignBox"}, {"HideText"},
    {"DynFeedback"}, {"GlueType"}, {"WalkPreference"}, {"BegTrigger"}, {"EndTrigger"}, {"ObjType"},
    {"Comment", 0, ""}, {"IsDropSource"}, {"NoLiveDynamics"}, {"LocalizeMerge"}, {"NoProofing"}, {"Calendar"},
    {"LangID", 0, "en-US"}, {"ShapeKeywords", 0, ""}, {"DropOnPageScale", 1},
    // Events.
    {"TheData"}, {"TheText"}, {"EventDblClick"}, {"EventXFMod"}, {"EventDrop"}, {"EventMultiDrop"},
    {"HelpTopic", 0, ""}, {"Copyright", 0, ""}, {"LayerMember", 0, ""},
    // Ruler and grid.
    {"XRulerDensity", 32}, {"YRulerDensity", 32}, {"XRulerOrigin"}, {"YRulerOrigin"}, {"XGridDensity", 8},
    {"YGridDensity", 8}, {"XGridSpacing"}, {"YGridSpacing"}, {"XGridOrigin"}, {"YGridOrigin"},
    // Pictures.
    {"Gamma", 1}, {"Contrast", 0.5}, {"Brightness", 0.5}, {"Sharpen"}, {"Blur"}, {"Denoise"}, {"Transparency"},
    // Groups.
    {"SelectMode", 1}, {"DisplayMode", 2}, {"IsDropTarget"}, {"IsSnapTarget", 1}, {"IsTextEditTarget", 1},
    {"DontMoveChildren"},
    // A shape in the layout of its page.
    {"ShapePermeableX"}, {"ShapePermeableY"}, {"ShapePermeablePlace"}, {"Relationships"}, {"ShapeFixedCode"},
    {"ShapePlowCode"}, {"ShapeRouteStyle"}, {"ShapePlaceStyle"}, {"ConFixedCode"}, {"ConLineJumpCode"},
    {"ConLineJumpStyle"}, {"ConLineJumpDirX"}, {"ConLineJumpDirY"}, {"ShapePlaceFlip"}, {"ConLineRouteExt"},
    {"ShapeSplit"}, {"ShapeSplittable"}, {"DisplayLevel"},
    // The layout of a page.
    {"ResizePage"}, {"EnableGrid"}, {"DynamicsOff"}, {"CtrlAsInput"}, {"AvoidPageBreaks"}, {"PlaceStyle"},
    {"RouteStyle"}, {"PlaceDepth"}, {"PlowCode"}, {"LineJumpCode", 1}, {"LineJumpStyle"},
    {"PageLineJumpDirX"}, {"PageLineJumpDirY"}, {"LineToNodeX", 0.125}, {"LineToNodeY", 0.125},
    {"BlockSizeX", 0.25}, {"BlockSizeY", 0.25}, {"AvenueSizeX", 0.375}, {"AvenueSizeY", 0.375},
    {"LineToLineX", 0.125}, {"LineToLineY", 0.125}, {"LineJumpFactorX", 2.0 / 3}, {"LineJumpFactorY", 2.0 / 3},
    {"LineAdjustFrom"}, {"LineAdjustTo"}, {"PlaceFlip"}, {"LineRouteExt"}, {"PageShapeSplit"},
    // Printing.
    {"PageLeftMargin", 0.25}, {"PageRightMargin", 0.25}, {"PageTopMargin", 0.25}, {"PageBottomMargin", 0.25},
    {"ScaleX", 1}, {"ScaleY", 1}, {"PagesX", 1}, {"PagesY", 1}, {"CenterX"}, {"CenterY"}, {"OnPage"},
    {"PrintGrid"}, {"PrintPageOrientation", 1}, {"PaperKind", 1}, {"PaperSource", 7},
    // Themes: 100 means none.
    {"QuickStyleLineColor", 100}, {"QuickStyleFillColor", 100}, {"QuickStyleShadowColor", 100},
    {"QuickStyleFontColor", 100}, {"QuickStyleLineMatrix", 100}, {"QuickStyleFillMatrix", 100},
    {"QuickStyleEffectsMatrix", 100}, {"QuickStyleFontMatrix", 100}, {"QuickStyleType"},
    {"QuickStyleVariation"},
    // Gradients and effects.
    {"LineGradientDir"}, {"LineGradientAngle", kUpwards}, {"FillGradientDir"}, {"FillGradientAngle", kUpwards},
    {"LineGradientEnabled"}, {"FillGradientEnabled"}, {"RotateGradientWithShape", 1}, {"UseGroupGradient"},
    {"BevelTopType"}, {"BevelTopWidth"}, {"BevelTopHeight"}, {"BevelBottomType"}, {"BevelBottomWidth"},
    {"BevelBottomHeight"}, {"BevelDepthColor", 1}, {"BevelDepthSize"}, {"BevelContourColor"},
    {"BevelContourSize"}, {"BevelMaterialType"}, {"BevelLightingType"}, {"BevelLightingAngle"},
    {"RotationXAngle"}, {"RotationYAngle"}, {"RotationZAngle"}, {"RotationType"}, {"Perspective"},
    {"DistanceFromGround"}, {"KeepTextFlat"}, {"ReflectionTrans"}, {"ReflectionSize"}, {"ReflectionDist"},
    {"ReflectionBlur"}, {"GlowColor", 1}, {"GlowColorTrans"}, {"GlowSize"}, {"SoftEdgesSize"},
    {"SketchSeed"}, {"SketchEnabled"}, {"SketchAmount", 5}, {"SketchLineWeight", 3 * kPoint},
    {"SketchLineChange", 0.14}, {"SketchFillChange", 0.1},
    {"ColorSchemeIndex"}, {"EffectSchemeIndex"}, {"ConnectorSchemeIndex"}, {"FontSchemeIndex"}, {"ThemeIndex"},
    {"VariationColorIndex"}, {"VariationStyleIndex"}, {"EmbellishmentIndex"},
    {"ReplaceLockShapeData"}, {"ReplaceLockText"}, {"ReplaceLockFormat"}, {"ReplaceCopyCells"},
    // Size and scale of a page.
    {"PageWidth"}, {"PageHeight"}, {"ShdwOffsetX"}, {"ShdwOffsetY"}, {"PageScale", 1}, {"DrawingScale", 1},
    {"DrawingSizeType"}, {"DrawingScaleType"}, {"InhibitSnap"}, {"PageLockReplace"}, {"PageLockDuplicate"},
    {"UIVisibility"}, {"ShdwType"}, {"ShdwObliqueAngle"}, {"ShdwScaleFactor", 1}, {"DrawingResizeType"},
};

constexpr CellDefault kCharacter[] = {
    {"Font"}, {"Color"}, {"Style"}, {"Case"}, {"Pos"}, {"FontScale", 1}, {"Size", 12 * kPoint}, {"DblUnderline"},
    {"Overline"}, {"Strikethru"}, {"DoubleStrikethrough"}, {"Letterspace"}, {"ColorTrans"}, {"AsianFont"},
    {"ComplexScriptFont"}, {"ComplexScriptSize", -1}, {"LangID", 0, "en-US"},
};

constexpr CellDefault kParagraph[] = {
    {"IndFirst"}, {"IndLeft"}, {"IndRight"}, {"SpLine", -1.2}, {"SpBefore"}, {"SpAfter"}, {"HorzAlign", 1},
    {"Bullet"}, {"BulletStr", 0, ""}, {"BulletFont"}, {"BulletFontSize", -1}, {"TextPosAfterBullet"}, {"Flags"},
};
// clang-format on

using KnownNumbers = std::array<double, static_cast<std::size_t>(Name::KnownEnd)>;

KnownNumbers CollectNumbers() {
    const NamePool names;
    KnownNumbers numbers{};
    for (const auto list : {SheetDefaults(), CharacterDefaults(), ParagraphDefaults()}) {
        for (const CellDefault& each : list) {
            if (const Name name = names.Find(each.cell); name != Name::None)
                numbers[static_cast<std::size_t>(name)] = each.number;
        }
    }
    return numbers;
}

}  // namespace

std::span<const CellDefault> SheetDefaults() {
    return kSheet;
}
std::span<const CellDefault> CharacterDefaults() {
    return kCharacter;
}
std::span<const CellDefault> ParagraphDefaults() {
    return kParagraph;
}

double DefaultNumber(Name cell) {
    static const KnownNumbers numbers = CollectNumbers();
    const auto index = static_cast<std::size_t>(cell);
    return index < numbers.size() ? numbers[index] : 0;
}

}  // namespace norvelis::drawing
