#pragma once

/// The entries of the menus. Their number is their id, and their place in the menu.

enum MainEntry {
    MoveEntry,
    RenameEntry,
    DeleteEntry,
    PropertiesEntry,
    RegisterEntry,
    SaveAsEntry,
    ViewEntry,
    MultiSelectEntry,
    RefreshEntry,
    AboutEntry
};

enum SaveEntry { SaveOnCardEntry, SaveOnPhoneEntry, SaveInBrowserEntry };

enum ViewFilterEntry { OnCardEntry, OnPhoneEntry, OnlyRegisteredEntry };

enum MultiSelectMenuEntry {
    MoveCheckedEntry,
    DeleteCheckedEntry,
    RegisterCheckedEntry,
    SelectAllEntry,
    UnselectAllEntry,
    CancelEntry
};

enum PackageEntry { InstallEntry, ShowAllEntry, GoToCardEntry, GoToPhoneEntry, AboutPackagesEntry };

/// The pages of the window.
enum Page { AppsPage, PackagesPage };
