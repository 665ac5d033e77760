// A deck with a chart on slide 1: the shop sample, unlinked.

import { addPart, editPart, holdStill } from "./deck.mjs";

const namespace = "http://schemas.openxmlformats.org/drawingml/2006";
export const chartShape = 900;
export const fill = "#ff0000";

const points = (values) => values.map((value, i) => `<c:pt idx="${i}"><c:v>${value}</c:v></c:pt>`).join("");

const chart = (values) =>
  `<c:chartSpace xmlns:c="${namespace}/chart" xmlns:a="${namespace}/main"><c:chart><c:plotArea><c:barChart>` +
  `<c:barDir val="col"/><c:ser><c:idx val="0"/><c:order val="0"/><c:tx><c:v>Sales</c:v></c:tx><c:spPr><a:solidFill>` +
  `<a:srgbClr val="${fill.slice(1)}"/></a:solidFill></c:spPr><c:cat><c:strLit>${points(["North", "South", "West"])}` +
  `</c:strLit></c:cat><c:val><c:numLit>${points(values)}</c:numLit></c:val></c:ser><c:axId val="1"/><c:axId val="2"/>` +
  `</c:barChart><c:catAx><c:axId val="1"/><c:crossAx val="2"/></c:catAx><c:valAx><c:axId val="2"/><c:scaling>` +
  `<c:max val="10"/><c:min val="0"/></c:scaling><c:axPos val="l"/><c:crossAx val="1"/></c:valAx></c:plotArea>` +
  `<c:legend><c:legendPos val="r"/></c:legend></c:chart></c:chartSpace>`;

const frame =
  `<p:graphicFrame><p:nvGraphicFramePr><p:cNvPr id="${chartShape}" name="Chart"/><p:cNvGraphicFramePr/><p:nvPr/>` +
  `</p:nvGraphicFramePr><p:xfrm><a:off x="0" y="0"/><a:ext cx="5715000" cy="3810000"/></p:xfrm><a:graphic>` +
  `<a:graphicData uri="${namespace}/chart"><c:chart xmlns:c="${namespace}/chart" r:id="rIdChart"/></a:graphicData>` +
  `</a:graphic></p:graphicFrame>`;

export function makeChartDeck(sandbox, values) {
  const deck = sandbox.sample("shop");
  holdStill(deck);
  sandbox.done("unlink", deck, "--all");
  addPart(deck, "ppt/charts/chart1.xml", chart(values));
  editPart(deck, "ppt/slides/_rels/slide1.xml.rels", (xml) =>
    xml.replace(
      "</Relationships>",
      `<Relationship Id="rIdChart" Type="http://schemas.openxmlformats.org/officeDocument/2006/relationships/chart" ` +
        `Target="../charts/chart1.xml"/></Relationships>`,
    ),
  );
  editPart(deck, "ppt/slides/slide1.xml", (xml) => xml.replace("</p:spTree>", `${frame}</p:spTree>`));
  return deck;
}
