pragma Singleton
import QtQuick

// What a window shows: all of it or, where the pointer goes through a margin, the card in it.
QtObject {
    // That of the window that `item` is in: the item that fills it.
    function around(item: Item): Item {
        let area = item;
        while (area.parent && area.parent.parent)
            area = area.parent;
        return area === item ? item.parent : area;
    }
}
