// Compares pictures by what can be seen of them, whatever their size.

// The mean difference of two pictures (PNG), 0 to 1, both brought to `columns` by `rows` fields. `page` is any open
// page; it does the drawing.
export function difference(page, first, second, columns = 48, rows = 27) {
  const pictures = [first, second].map((png) => `data:image/png;base64,${png.toString("base64")}`);
  return page.evaluate(
    async ([addresses, width, height]) => {
      const fields = async (address) => {
        const image = new Image();
        image.src = address;
        await image.decode();
        // By steps of a half, as browsers look at four neighbours only.
        let source = image;
        let [w, h] = [image.naturalWidth, image.naturalHeight];
        do {
          [w, h] = [Math.max(width, Math.ceil(w / 2)), Math.max(height, Math.ceil(h / 2))];
          const canvas = new OffscreenCanvas(w, h);
          const context = canvas.getContext("2d");
          context.imageSmoothingQuality = "high";
          context.drawImage(source, 0, 0, w, h);
          source = canvas;
        } while (w > width || h > height);
        return source.getContext("2d").getImageData(0, 0, width, height).data;
      };
      const [a, b] = await Promise.all(addresses.map(fields));
      // All are opaque, so the fourth channel adds nothing.
      return a.reduce((sum, channel, i) => sum + Math.abs(channel - b[i]), 0) / (255 * 3 * width * height);
    },
    [pictures, columns, rows],
  );
}
