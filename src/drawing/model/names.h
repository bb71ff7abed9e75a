#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>

// Names of cells, sections, row types and units, each held as a small number. Those that the program works
// with are in the list below; what else a file brings is added to its document's own pool.
namespace norvelis::drawing {

// clang-format off
#define NORVELIS_DRAWING_NAMES(N_) \
    /* place and size */ \
    N_(PinX) N_(PinY) N_(Width) N_(Height) N_(LocPinX) N_(LocPinY) N_(Angle) N_(FlipX) N_(FlipY) N_(ResizeMode) \
    N_(BeginX) N_(BeginY) N_(EndX) N_(EndY) \
    /* line */ \
    N_(LineWeight) N_(LineColor) N_(LinePattern) N_(Rounding) N_(EndArrow) N_(BeginArrow) N_(EndArrowSize) \
    N_(BeginArrowSize) N_(LineCap) N_(LineColorTrans) N_(CompoundType) \
    /* fill and shadow */ \
    N_(FillForegnd) N_(FillBkgnd) N_(FillPattern) N_(FillForegndTrans) N_(FillBkgndTrans) N_(ShdwForegnd) N_(ShdwBkgnd) \
    N_(ShdwPattern) N_(ShdwForegndTrans) N_(ShdwBkgndTrans) N_(ShapeShdwType) N_(ShapeShdwOffsetX) N_(ShapeShdwOffsetY) \
    N_(ShapeShdwObliqueAngle) N_(ShapeShdwScaleFactor) N_(ShapeShdwBlur) N_(ShapeShdwShow) \
    /* text block */ \
    N_(LeftMargin) N_(RightMargin) N_(TopMargin) N_(BottomMargin) N_(VerticalAlign) N_(TextBkgnd) N_(TextBkgndTrans) \
    N_(DefaultTabStop) N_(TextDirection) N_(TxtPinX) N_(TxtPinY) N_(TxtWidth) N_(TxtHeight) N_(TxtLocPinX) N_(TxtLocPinY) \
    N_(TxtAngle) N_(TheText) \
    /* events, protection, miscellaneous, group */ \
    N_(TheData) N_(EventDblClick) N_(EventXFMod) N_(EventDrop) N_(EventMultiDrop) N_(HelpTopic) N_(Copyright) \
    N_(LockWidth) N_(LockHeight) N_(LockMoveX) N_(LockMoveY) N_(LockAspect) N_(LockDelete) N_(LockBegin) N_(LockEnd) N_(LockRotate) N_(LockCrop) N_(LockVtxEdit) \
    N_(LockTextEdit) N_(LockFormat) N_(LockGroup) N_(LockCalcWH) N_(LockSelect) N_(LockCustProp) N_(NoObjHandles) \
    N_(NonPrinting) N_(NoCtlHandles) N_(NoAlignBox) N_(UpdateAlignBox) N_(HideText) N_(DynFeedback) N_(GlueType) \
    N_(WalkPreference) N_(BegTrigger) N_(EndTrigger) N_(ObjType) N_(Comment) N_(IsDropSource) N_(NoLiveDynamics) \
    N_(LocalizeMerge) N_(Calendar) N_(LangID) N_(ShapeKeywords) N_(DropOnPageScale) N_(LayerMember) N_(SelectMode) \
    N_(DisplayMode) N_(IsDropTarget) N_(IsSnapTarget) N_(IsTextEditTarget) N_(DontMoveChildren) \
    /* a shape in the page's layout */ \
    N_(ShapePermeableX) N_(ShapePermeableY) N_(ShapePermeablePlace) N_(Relationships) N_(ShapeFixedCode) N_(ShapePlowCode) \
    N_(ShapeRouteStyle) N_(ShapePlaceStyle) N_(ConFixedCode) N_(ConLineJumpCode) N_(ConLineJumpStyle) N_(ConLineJumpDirX) \
    N_(ConLineJumpDirY) N_(ShapePlaceFlip) N_(ConLineRouteExt) N_(ShapeSplit) N_(ShapeSplittable) \
    /* page */ \
    N_(PageWidth) N_(PageHeight) N_(ShdwOffsetX) N_(ShdwOffsetY) N_(PageScale) N_(DrawingScale) N_(DrawingSizeType) \
    N_(DrawingScaleType) N_(InhibitSnap) N_(PageLockReplace) N_(PageLockDuplicate) N_(UIVisibility) N_(ShdwType) \
    N_(ShdwObliqueAngle) N_(ShdwScaleFactor) N_(DrawingResizeType) N_(ResizePage) N_(EnableGrid) N_(DynamicsOff) \
    N_(CtrlAsInput) N_(PlaceStyle) N_(RouteStyle) N_(PlaceDepth) N_(PlowCode) N_(LineJumpCode) N_(LineJumpStyle) \
    N_(PageLineJumpDirX) N_(PageLineJumpDirY) N_(LineToNodeX) N_(LineToNodeY) N_(BlockSizeX) N_(BlockSizeY) N_(AvenueSizeX) \
    N_(AvenueSizeY) N_(LineToLineX) N_(LineToLineY) N_(LineJumpFactorX) N_(LineJumpFactorY) N_(LineAdjustFrom) \
    N_(LineAdjustTo) N_(PlaceFlip) N_(LineRouteExt) N_(AvoidPageBreaks) N_(PageShapeSplit) N_(PageLeftMargin) \
    N_(PageRightMargin) N_(PageTopMargin) N_(PageBottomMargin) N_(ScaleX) N_(ScaleY) N_(PagesX) N_(PagesY) N_(CenterX) \
    N_(CenterY) N_(OnPage) N_(PrintGrid) N_(PrintPageOrientation) N_(PaperKind) N_(PaperSource) N_(XRulerDensity) \
    N_(YRulerDensity) N_(XRulerOrigin) N_(YRulerOrigin) N_(XGridDensity) N_(YGridDensity) N_(XGridSpacing) N_(YGridSpacing) \
    N_(XGridOrigin) N_(YGridOrigin) \
    /* document and style */ \
    N_(OutputFormat) N_(LockPreview) N_(PreviewQuality) N_(PreviewScope) N_(ViewMarkup) N_(AddMarkup) N_(DocLangID) \
    N_(EnableLineProps) N_(EnableFillProps) N_(EnableTextProps) N_(HideForApply) \
    /* foreign pictures */ \
    N_(ImgOffsetX) N_(ImgOffsetY) N_(ImgWidth) N_(ImgHeight) \
    /* sections */ \
    N_(Geometry) N_(Character) N_(Paragraph) N_(Tabs) N_(Hyperlink) N_(Property) N_(User) N_(Layer) N_(Control) N_(Connection) \
    N_(Scratch) N_(Actions) N_(Field) \
    /* geometry: section cells, row types, row cells */ \
    N_(NoFill) N_(NoLine) N_(NoShow) N_(NoSnap) N_(NoQuickDrag) N_(MoveTo) N_(LineTo) N_(ArcTo) N_(EllipticalArcTo) N_(Ellipse) \
    N_(InfiniteLine) N_(SplineStart) N_(SplineKnot) N_(PolylineTo) N_(NURBSTo) N_(RelMoveTo) N_(RelLineTo) N_(RelCubBezTo) \
    N_(RelQuadBezTo) N_(RelEllipticalArcTo) N_(X) N_(Y) N_(A) N_(B) N_(C) N_(D) N_(E) \
    /* character and paragraph rows */ \
    N_(Font) N_(Color) N_(Style) N_(Case) N_(Pos) N_(FontScale) N_(Size) N_(DblUnderline) N_(Overline) N_(Strikethru) \
    N_(DoubleStrikethrough) N_(Letterspace) N_(ColorTrans) N_(AsianFont) N_(ComplexScriptFont) N_(ComplexScriptSize) \
    N_(IndFirst) N_(IndLeft) N_(IndRight) N_(SpLine) N_(SpBefore) N_(SpAfter) N_(HorzAlign) N_(Bullet) N_(BulletStr) \
    N_(BulletFont) N_(BulletFontSize) N_(TextPosAfterBullet) N_(Flags) N_(LocalizeBulletFont) \
    N_(Position0) N_(Alignment0) N_(Leader0) N_(Position1) N_(Alignment1) N_(Leader1) N_(Position2) N_(Alignment2) N_(Leader2) \
    /* hyperlink, property, layer and control rows */ \
    N_(Description) N_(Address) N_(SubAddress) N_(ExtraInfo) N_(Frame) N_(NewWindow) N_(Default) N_(Invisible) N_(SortKey) \
    N_(Value) N_(Prompt) N_(Label) N_(Format) N_(Type) N_(Verify) N_(Name) N_(NameUniv) N_(Status) N_(Visible) N_(Print) \
    N_(Active) N_(Lock) N_(Snap) N_(Glue) N_(XDyn) N_(YDyn) N_(XCon) N_(YCon) N_(CanGlue) N_(DirX) N_(DirY) N_(AutoGen) \
    N_(TextPosition) \
    /* units */ \
    N_(IN) N_(PT) N_(MM) N_(CM) N_(DEG) N_(RAD) N_(STR) N_(BOOL) N_(COLOR) N_(DL) N_(DT) N_(DA) N_(GUID) N_(PER)

enum class Name : std::uint16_t {
    None,
#define NORVELIS_DRAWING_ENUMERATOR(name) name,
    NORVELIS_DRAWING_NAMES(NORVELIS_DRAWING_ENUMERATOR)
#undef NORVELIS_DRAWING_ENUMERATOR
    KnownEnd
};
// clang-format on

/// A document's names: the known ones and those that its files brought.
class NamePool {
  public:
    static constexpr std::size_t kMost = 0x7FFF;  ///< A row's name shares its number with a flag.

    NamePool();
    /// Letter case does not count. None when the pool does not have it.
    Name Find(std::string_view text) const;
    /// The name in exactly this spelling, added when needed; None when the pool is full or the text is empty.
    Name Intern(std::string_view text);
    std::string_view Text(Name name) const { return texts_[static_cast<std::size_t>(name)]; }

  private:
    std::deque<std::string> texts_;
    std::unordered_map<std::string, Name> bySpelling_, byLowerCase_;
};

}  // namespace norvelis::drawing
