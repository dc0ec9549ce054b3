// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// For "mutool run": prints, for each page of the document named by the argument, the effective
// values of the inheritable entries (ISO 32000-2, 7.7.3.4): "media l b r t crop l b r t rotate n".

var document = new Document(scriptArgs[0]);

function inherited(page, key) {
	var node = page;
	for (var depth = 0; depth < 64 && node && node.isDictionary(); ++depth) {
		var value = node.get(key);
		if (value && !value.isNull()) return value.resolve();
		node = node.get("Parent");
	}
	return null;
}

function box(value) {
	if (!value || !value.isArray() || value.length !== 4) return null;
	var sides = [];
	for (var i = 0; i < 4; ++i) sides.push(value.get(i).resolve().valueOf());
	return [
		Math.min(sides[0], sides[2]), Math.min(sides[1], sides[3]),
		Math.max(sides[0], sides[2]), Math.max(sides[1], sides[3])
	];
}

var count = document.countPages();
for (var i = 0; i < count; ++i) {
	var page = document.findPage(i);
	var media = box(inherited(page, "MediaBox")) || [0, 0, 612, 792];
	var crop = box(inherited(page, "CropBox")) || media;
	var rotate = inherited(page, "Rotate");
	print("media", media.join(" "), "crop", crop.join(" "), "rotate", rotate ? rotate.valueOf() : 0);
}
