#import "platform/macos/drawing/Conversions.h"
#import "platform/macos/text/Strings.h"
#import "platform/macos/views/NativeView.h"
#include "platform/view/TableView.h"
#include "platform/view/Window.h"

#include <optional>
#include <utility>

using quillbar::platform::TableView;

namespace {

NSString* const columnIdentifier = @"main";
NSString* const hostIdentifier = @"host";

void setBackgroundStyle(NSView* view, NSBackgroundStyle style)
{
    if ([view isKindOfClass:NSControl.class]) {
        NSCell* const cell = static_cast<NSControl*>(view).cell;
        cell.backgroundStyle = style;
    }
    for (NSView* subview in view.subviews)
        setBackgroundStyle(subview, style);
}

std::optional<std::size_t> rowIndex(NSInteger row)
{
    return row < 0 ? std::nullopt : std::optional(static_cast<std::size_t>(row));
}

/// One of the row's controls may have been given the keyboard before the row was in the window.
void restoreFocus(NSView* content)
{
    auto const* const row = content.window ? quillbar::platform::portableViewOf(content) : nullptr;
    auto const* const window = row ? row->window() : nullptr;
    auto const focused = window ? window->firstResponder() : nullptr;
    if (focused && focused->isDescendantOf(*row))
        quillbar::platform::syncFirstResponder(*window);
}

} // namespace

/// The place of one row in the native table, which reuses it for other rows.
@interface QuillbarRowHost : NSTableCellView
/// Nil empties the host. The origin is that of the content's frame, which lies in the table.
- (void)show:(NSView*)content origin:(NSPoint)origin;
@end

@implementation QuillbarRowHost
- (BOOL)isFlipped
{
    return YES;
}

- (void)show:(NSView*)content origin:(NSPoint)origin
{
    for (NSView* other in [self.subviews copy]) {
        if (other != content)
            [other removeFromSuperview];
    }
    [self setBoundsOrigin:origin];
    if (content && content.superview != self)
        [self addSubview:content];
    ::setBackgroundStyle(content, self.backgroundStyle);
    restoreFocus(content);
}

- (void)viewDidMoveToWindow
{
    [super viewDidMoveToWindow];
    restoreFocus(self.subviews.firstObject);
}

// AppKit reaches the labels that are subviews of the host itself only.
- (void)setBackgroundStyle:(NSBackgroundStyle)style
{
    [super setBackgroundStyle:style];
    for (NSView* view in self.subviews)
        ::setBackgroundStyle(view, style);
}
@end

@interface QuillbarRow : NSTableRowView
@end

@implementation QuillbarRow
// The table never has the focus; its selection is what Return will use all the same.
- (BOOL)isEmphasized
{
    return YES;
}
@end

/// Its own data source and delegate, so that these live as long as AppKit uses the table.
@interface QuillbarTable : NSTableView <NSTableViewDataSource, NSTableViewDelegate>
/// Null once the portable table is gone.
@property TableView* shown;
- (void)sync;
@end

@implementation QuillbarTable {
    // As AppKit was last told.
    NSInteger _rowCount;
}

- (instancetype)initWithFrame:(NSRect)frame
{
    if (!(self = [super initWithFrame:frame]))
        return nil;
    NSTableColumn* const column = [[NSTableColumn alloc] initWithIdentifier:columnIdentifier];
    [self addTableColumn:column];
    self.headerView = nil;
    self.style = NSTableViewStylePlain;
    self.intercellSpacing = NSZeroSize;
    self.backgroundColor = NSColor.clearColor;
    self.refusesFirstResponder = YES;
    self.dataSource = self;
    self.delegate = self;
    self.target = self;
    self.doubleAction = @selector(doubleClicked:);
    [self registerForDraggedTypes:@[ NSPasteboardTypeString ]];
    [self setDraggingSourceOperationMask:NSDragOperationMove forLocal:YES];
    [self setDraggingSourceOperationMask:NSDragOperationNone forLocal:NO];
    return self;
}

- (void)sync
{
    NSTableColumn* const column = self.tableColumns.firstObject;
    column.width = self.shown->frame().width;
    if (self.rowHeight != self.shown->rowHeight())
        self.rowHeight = self.shown->rowHeight();
    auto const rowCount = static_cast<NSInteger>(self.shown->numberOfRows());
    if (std::exchange(_rowCount, rowCount) != rowCount)
        [self noteNumberOfRowsChanged];
    [self syncSelection];
    [self enumerateAvailableRowViewsUsingBlock:^(
        NSTableRowView* rowView, NSInteger row) { [self fill:[rowView viewAtColumn:0] row:row]; }];
}

- (void)syncSelection
{
    auto const& selected = self.shown->selectedRow();
    NSIndexSet* const rows
        = selected ? [NSIndexSet indexSetWithIndex:*selected] : [NSIndexSet indexSet];
    if (![self.selectedRowIndexes isEqualToIndexSet:rows])
        [self selectRowIndexes:rows byExtendingSelection:NO];
}

// The portable table decides whose view stands in a host, and has none for rows that it takes to be
// out of sight.
- (void)fill:(QuillbarRowHost*)host row:(NSInteger)row
{
    auto const index = rowIndex(row);
    auto const view = self.shown && index ? self.shown->viewAtRow(*index) : nullptr;
    if (view && view->native())
        [host show:view->native()->view origin:view->native()->view.frame.origin];
    else
        [host show:nil origin:NSZeroPoint];
}

- (void)mouseDown:(NSEvent*)event
{
    if (self.shown) {
        NSPoint const place = [self convertPoint:event.locationInWindow fromView:nil];
        self.shown->userClicked(rowIndex([self rowAtPoint:place]));
    }
    [super mouseDown:event];
}

- (void)doubleClicked:(id)sender
{
    (void)sender;
    if (self.shown)
        self.shown->userDoubleClicked(rowIndex(self.clickedRow));
}

- (NSInteger)numberOfRowsInTableView:(NSTableView*)tableView
{
    (void)tableView;
    return _rowCount;
}

- (NSView*)tableView:(NSTableView*)tableView
    viewForTableColumn:(NSTableColumn*)tableColumn
                   row:(NSInteger)row
{
    auto* host = static_cast<QuillbarRowHost*>([tableView makeViewWithIdentifier:hostIdentifier
                                                                           owner:self]);
    if (!host) {
        host = [[QuillbarRowHost alloc]
            initWithFrame:NSMakeRect(0, 0, tableColumn.width, tableView.rowHeight)];
        host.identifier = hostIdentifier;
    }
    [self fill:host row:row];
    return host;
}

- (NSTableRowView*)tableView:(NSTableView*)tableView rowViewForRow:(NSInteger)row
{
    (void)tableView;
    (void)row;
    return [[QuillbarRow alloc] initWithFrame:NSZeroRect];
}

// The portable table selects, in mouseDown:; a press between the rows would clear the selection.
- (NSIndexSet*)tableView:(NSTableView*)tableView
    selectionIndexesForProposedSelection:(NSIndexSet*)proposedSelectionIndexes
{
    (void)proposedSelectionIndexes;
    return tableView.selectedRowIndexes;
}

- (id<NSPasteboardWriting>)tableView:(NSTableView*)tableView pasteboardWriterForRow:(NSInteger)row
{
    (void)tableView;
    auto const index = rowIndex(row);
    auto const text = self.shown && index ? self.shown->dragText(*index) : std::nullopt;
    if (!text)
        return nil;
    NSPasteboardItem* const item = [[NSPasteboardItem alloc] init];
    [item setString:quillbar::platform::nsString(*text) forType:NSPasteboardTypeString];
    return item;
}

- (NSDragOperation)tableView:(NSTableView*)tableView
                validateDrop:(id<NSDraggingInfo>)info
                 proposedRow:(NSInteger)row
       proposedDropOperation:(NSTableViewDropOperation)dropOperation
{
    (void)row;
    bool const isOwn = info.draggingSource == tableView;
    return isOwn && dropOperation == NSTableViewDropAbove ? NSDragOperationMove
                                                          : NSDragOperationNone;
}

- (BOOL)tableView:(NSTableView*)tableView
       acceptDrop:(id<NSDraggingInfo>)info
              row:(NSInteger)row
    dropOperation:(NSTableViewDropOperation)dropOperation
{
    (void)tableView;
    (void)dropOperation;
    NSString* const text =
        [info.draggingPasteboard.pasteboardItems.firstObject stringForType:NSPasteboardTypeString];
    auto const gap = rowIndex(row);
    return self.shown && text && gap
        && self.shown->userDropped(quillbar::platform::utf8(text), *gap);
}
@end

namespace quillbar::platform {

namespace {

class TablePeer final : public NativeView {
public:
    explicit TablePeer(TableView& shown)
        : NativeView(shown, [[QuillbarTable alloc] initWithFrame:NSZeroRect])
        , table_(static_cast<QuillbarTable*>(view))
        , shown_(shown)
    {
        table_.shown = &shown;
    }
    TablePeer(TablePeer const&) = delete;
    TablePeer& operator=(TablePeer const&) = delete;
    ~TablePeer() override { table_.shown = nullptr; }

    /// Views of rows go into the hosts: at once where a host was there before its row's peer.
    void adopt(NSView* subview) override
    {
        auto const& rowView = *portableViewOf(subview);
        auto const row = shown_.rowOf(rowView);
        if (!row)
            return;
        NSView* const host = [table_ viewAtColumn:0
                                              row:static_cast<NSInteger>(*row)
                                  makeIfNecessary:NO];
        [static_cast<QuillbarRowHost*>(host) show:subview origin:nsRect(rowView.frame()).origin];
    }

    void sync() override { [table_ sync]; }

private:
    QuillbarTable* const table_;
    TableView& shown_;
};

} // namespace

NativeView* makeTablePeer(View& view)
{
    return new TablePeer(static_cast<TableView&>(view));
}

} // namespace quillbar::platform
