.pragma library

// The item of a name in what an item shows, null when there is none.
function named(item, name) {
    if (item.objectName === name) {
        return item;
    }
    for (let i = 0; i < item.children.length; ++i) {
        const found = named(item.children[i], name);
        if (found !== null) {
            return found;
        }
    }
    return null;
}

// All texts on show in an item, as they stand below each other.
function texts(item) {
    const found = [];
    collect(item, item, found);
    found.sort((one, other) => Math.abs(one.y - other.y) > 4 ? one.y - other.y : one.x - other.x);
    return found.map(entry => entry.text);
}

function collect(top, item, found) {
    if (!item.visible) {
        return;
    }
    if (item.textFormat !== undefined && item.text !== "") {
        const place = item.mapToItem(top, 0, 0);
        found.push({x: place.x, y: place.y, text: item.text});
    }
    for (let i = 0; i < item.children.length; ++i) {
        collect(top, item.children[i], found);
    }
}
