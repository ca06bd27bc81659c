// The web map's page. It shows the pictures drawn ahead for every year and
// view, answers the pointer with the readout and a click with the planet's
// detail panel, from the data that each year's script hands over. Text from
// the game (planet and race names, every panel value) only ever goes into
// the page as text, never as markup.
"use strict";

const veltroMap = (() => {
  const CanvasUnits = 10020; // the map canvas's side in its own units
  const ZoomLevels = [-2, -1, 0, 1, 2, 3, 4, 5, 6].map((k) => Math.pow(2, k / 2));
  const PlayMilliseconds = 800;
  const $ = (id) => document.getElementById(id);

  let site = null;            // the index: title, labels, pixels, years, views
  // Each year's scripts: "year" (view values, planets, races), small enough
  // to answer the pointer at once, and "panels", its planets' detail panels.
  const arrived = { year: new Map(), panels: new Map() };
  const waiting = { year: new Map(), panels: new Map() };
  let yearIndex = 0;
  let viewIndex = 0;
  let zoom = 1;
  let pan = { x: 0, y: 0 };   // the sheet's top left corner in the map box
  let pointer = null;         // the universe position last under the pointer
  let shownRow = 0;           // the planet whose panel shows (table row)
  let markedRow = 0;          // the planet found by the search
  let playing = null;

  const currentYear = () => arrived.year.get(site.years[yearIndex]);

  // ---- Data ----------------------------------------------------------

  function load(kind, year) {
    if (arrived[kind].has(year)) return Promise.resolve(arrived[kind].get(year));
    return new Promise((resolve, reject) => {
      if (!waiting[kind].has(year)) {
        waiting[kind].set(year, []);
        const script = document.createElement("script");
        script.src = `years/${year}/${kind === "year" ? "planets" : "panels"}.js`;
        script.onerror = () => reject(new Error(`${script.src} is missing`));
        document.head.append(script);
      }
      waiting[kind].get(year).push(resolve);
    });
  }

  function handOver(kind, data) {
    arrived[kind].set(data.year, data);
    for (const resolve of waiting[kind].get(data.year) || []) resolve(data);
    waiting[kind].delete(data.year);
  }

  // ---- The readout, exactly as the program's -------------------------

  // The pointer at universe position (x, y) in light years: its canvas
  // position is the single-precision value of (x - origin) x scale, the
  // readout that position back in whole light years (rounded down), and a
  // planet lies under it when its pick point (rounded half to even when the
  // data was written) is at most 20 units right of or below the pointer and
  // at most 60 units left of or above it. Of several, the last is named.
  function readoutAt(x, y) {
    const d = currentYear();
    const cx = Math.fround((x - d.OriginX) * d.Scale);
    const cy = Math.fround((y - d.OriginY) * d.Scale);
    const result = {
      XYCoord: ` X:${Math.floor(cx / d.Scale) + d.OriginX} Y:${Math.floor(cy / d.Scale) + d.OriginY}`,
      theplanet: " Deep Space",
      ToolTip: "",
      Picked: [],
    };
    d.planets.forEach(([px, py, name], i) => {
      if (cx - 60 <= px && px <= cx + 20 && cy - 60 <= py && py <= cy + 20) {
        result.Picked.push(i + 1);
        result.theplanet = " " + name;
        result.ToolTip = "Click for more information on " + name;
      }
    });
    return result;
  }

  // Client coordinates to light years, through the sheet as it is now shown:
  // where the map box is (kept from the last layout, so that a pointer move
  // never waits for one), the pan and the zoom.
  let mapBox = null;
  function universeAt(clientX, clientY) {
    const d = currentYear();
    const side = site.pixels * zoom;
    return {
      x: ((clientX - mapBox.left - pan.x) / side) * (CanvasUnits / d.Scale) + d.OriginX,
      y: ((clientY - mapBox.top - pan.y) / side) * (CanvasUnits / d.Scale) + d.OriginY,
    };
  }

  function showReadout() {
    if (!pointer) return;
    const r = readoutAt(pointer.x, pointer.y);
    $("XYCoord").textContent = r.XYCoord;
    $("theplanet").textContent = r.theplanet;
    $("map").title = r.ToolTip;
    return r;
  }

  // ---- Pictures, zoom and pan ----------------------------------------

  // Twice the size once the picture is shown larger than its pixels, so the
  // map stays sharp to 2x on any screen; beyond that its pixels show square.
  function pictureFile(name) {
    const scale = zoom * window.devicePixelRatio;
    return `years/${site.years[yearIndex]}/${name}${scale > 1 ? "@2x" : ""}.png`;
  }

  function showPictures() {
    const setSource = (img, file) => { if (img.getAttribute("src") !== file) img.src = file; };
    setSource($("picture"), pictureFile(site.views[viewIndex].id));
    const names = $("nameLayer");
    names.hidden = !$("names").checked;
    if (!names.hidden) setSource(names, pictureFile("names"));
    $("sheet").classList.toggle("enlarged", zoom * window.devicePixelRatio > 2);
  }

  const snap = (v) => Math.round(v * window.devicePixelRatio) / window.devicePixelRatio;

  function placeSheet() {
    const box = (mapBox = $("map").getBoundingClientRect());
    const side = site.pixels * zoom;
    // A map smaller than its box sits in the middle; a larger one covers it.
    const limit = (p, room) => (room >= side ? (room - side) / 2 : Math.min(0, Math.max(room - side, p)));
    pan = { x: snap(limit(pan.x, box.width)), y: snap(limit(pan.y, box.height)) };
    const sheet = $("sheet");
    sheet.style.width = sheet.style.height = `${side}px`;
    sheet.style.left = `${pan.x}px`;
    sheet.style.top = `${pan.y}px`;
    $("zoomShown").textContent = `${Math.round(zoom * 100)} %`;
    showPictures();
    placeMarker();
  }

  // Zooms to a level keeping the point under (clientX, clientY) in place.
  function zoomTo(level, clientX, clientY) {
    const box = $("map").getBoundingClientRect();
    if (clientX === undefined) [clientX, clientY] = [box.left + box.width / 2, box.top + box.height / 2];
    const fx = (clientX - box.left - pan.x) / (site.pixels * zoom);
    const fy = (clientY - box.top - pan.y) / (site.pixels * zoom);
    zoom = ZoomLevels[Math.max(0, Math.min(ZoomLevels.length - 1, level))];
    pan = { x: clientX - box.left - fx * site.pixels * zoom, y: clientY - box.top - fy * site.pixels * zoom };
    placeSheet();
  }

  const zoomLevel = () => ZoomLevels.indexOf(zoom);

  // The largest level up to 100 % at which the whole map fits its box.
  function wholeMapLevel() {
    const box = $("map").getBoundingClientRect();
    const room = Math.min(box.width, box.height);
    let level = ZoomLevels.indexOf(1);
    while (level > 0 && site.pixels * ZoomLevels[level] > room) level--;
    return level;
  }

  // ---- Year, view, legend --------------------------------------------

  async function goToYear(index) {
    index = Math.max(0, Math.min(site.years.length - 1, index));
    await load("year", site.years[index]);
    yearIndex = index;
    const year = site.years[index];
    // A game loaded without its year has year 0: no year to show.
    const label = year > 0 ? String(year) : "";
    $("year").value = String(index);
    $("year").setAttribute("aria-valuetext", label);
    $("yearShown").textContent = label;
    showPictures();
    showLegend();
    showReadout();
    showPanel(shownRow);
    placeMarker();
  }

  function showLegend() {
    const list = $("races");
    list.replaceChildren();
    for (const race of currentYear().races) {
      const item = document.createElement("li");
      const swatch = document.createElement("span");
      swatch.className = "swatch";
      swatch.style.backgroundColor = race.colour;
      const name = document.createElement("span");
      name.textContent = race.name;
      item.append(swatch, name);
      list.append(item);
    }
  }

  function play(on) {
    clearInterval(playing);
    playing = null;
    $("play").textContent = on ? "\u275A\u275A" : "\u25B6";
    $("play").setAttribute("aria-label", on ? "Pause" : "Play");
    $("play").title = on ? "Pause" : "Play";
    if (!on) return;
    if (yearIndex === site.years.length - 1) goToYear(0);
    playing = setInterval(async () => {
      if (yearIndex >= site.years.length - 1) return play(false);
      const next = site.years[yearIndex + 1];
      await load("year", next);
      await preload(`years/${next}/${site.views[viewIndex].id}${zoom * window.devicePixelRatio > 1 ? "@2x" : ""}.png`);
      if (playing) goToYear(yearIndex + 1);
    }, PlayMilliseconds);
  }

  function preload(file) {
    const img = new Image();
    img.src = file;
    return img.decode().catch(() => {});
  }

  // ---- The planet detail panel ---------------------------------------

  // A planet's panel as `planet --number N` writes it: the year's data keeps
  // the labels' values in the order of the site's label names, and each
  // pie slice as [start, end, FillColor].
  function panelOf(row) {
    const p = arrived.panels.get(site.years[yearIndex]).panels[row - 1];
    if (p.Error) return { Error: p.Error };
    const slices = (rows) => rows.map(([start, end, FillColor]) => ({ start, end, FillColor }));
    const Detail = {};
    site.labels.forEach((label, i) => { Detail[label] = p.Detail[i]; });
    return { Detail, RHab: p.RHab, Pie1: slices(p.Pie1), Pie2: slices(p.Pie2) };
  }

  // Shows the planet's panel once the year's panels are there.
  async function showPanel(row) {
    const d = currentYear();
    shownRow = row > 0 && row <= d.planets.length ? row : 0;
    $("tabs").hidden = shownRow === 0;
    $("detailHint").hidden = shownRow !== 0;
    if (!shownRow) return;
    await load("panels", d.year);
    if (row !== shownRow || d !== currentYear()) return;
    const panel = panelOf(shownRow);
    $("panelError").hidden = !panel.Error;
    $("panelError").textContent = panel.Error || "";
    for (const cell of document.querySelectorAll("#detail [data-label]"))
      cell.textContent = panel.Detail ? panel.Detail[cell.dataset.label] : "";
    const rows = $("habs").rows;
    for (let k = 0; k < rows.length; k++) {
      const name = d.RName[k], hab = panel.RHab ? panel.RHab[k] : "";
      rows[k].cells[0].textContent = name;
      rows[k].cells[1].textContent = hab;
      rows[k].hidden = name === "" && hab === "";
    }
    drawPie($("Pie1"), panel.Pie1 || []);
    drawPie($("Pie2"), panel.Pie2 || []);
  }

  // The slices as the pie box draws them: from the start angle counter-
  // clockwise to the end (the long way round when the end is smaller),
  // radius 800 of the box's 1680 units, black outlines.
  function drawPie(canvas, slices) {
    const pixels = Math.round(112 * window.devicePixelRatio);
    canvas.width = canvas.height = pixels;
    const g = canvas.getContext("2d");
    g.scale(pixels / 1680, pixels / 1680);
    g.lineWidth = 1680 / pixels;
    for (const s of slices) {
      g.beginPath();
      g.moveTo(840, 840);
      g.arc(840, 840, 800, -s.start, -s.end, true);
      g.closePath();
      g.fillStyle = `rgb(${s.FillColor & 255}, ${(s.FillColor >> 8) & 255}, ${(s.FillColor >> 16) & 255})`;
      g.fill();
      g.stroke();
    }
  }

  function selectTab(tab) {
    for (const t of document.querySelectorAll('[role="tab"]')) {
      const on = t === tab;
      t.setAttribute("aria-selected", String(on));
      t.tabIndex = on ? 0 : -1;
      $(t.getAttribute("aria-controls")).hidden = !on;
    }
  }

  // ---- Search --------------------------------------------------------

  function placeMarker() {
    const marker = $("marker");
    const planet = markedRow && currentYear().planets[markedRow - 1];
    marker.hidden = !planet;
    if (!planet) return;
    marker.style.left = `${(planet[0] / CanvasUnits) * 100}%`;
    marker.style.top = `${(planet[1] / CanvasUnits) * 100}%`;
  }

  // Planets whose name holds the text, whatever the case: the name itself
  // first, then names starting with it, then the rest in table order.
  function find() {
    const text = $("search").value.trim().toLowerCase();
    const list = $("matches");
    list.replaceChildren();
    if (!text) {
      $("found").textContent = "";
      return;
    }
    const hits = [];
    currentYear().planets.forEach(([, , name], i) => {
      const at = name.toLowerCase().indexOf(text);
      if (at >= 0) hits.push({ row: i + 1, name, rank: name.toLowerCase() === text ? 0 : at === 0 ? 1 : 2 });
    });
    hits.sort((a, b) => a.rank - b.rank || a.row - b.row);
    $("found").textContent = hits.length ? `${hits.length} found` : "No planet by that name";
    for (const hit of hits.slice(0, 12)) {
      const button = document.createElement("button");
      button.type = "button";
      button.textContent = hit.name;
      button.dataset.row = String(hit.row);
      button.addEventListener("click", () => choose(hit.row));
      const item = document.createElement("li");
      item.append(button);
      list.append(item);
    }
    if (hits.length) choose(hits[0].row);
  }

  function choose(row) {
    markedRow = row;
    for (const b of $("matches").querySelectorAll("button"))
      b.setAttribute("aria-current", String(b.dataset.row === String(row)));
    showPanel(row);
    placeMarker();
    // Bring the planet into the middle when it lies outside the map box.
    const box = $("map").getBoundingClientRect();
    const [px, py] = currentYear().planets[row - 1];
    const x = pan.x + (px / CanvasUnits) * site.pixels * zoom, y = pan.y + (py / CanvasUnits) * site.pixels * zoom;
    if (x < 0 || y < 0 || x > box.width || y > box.height) {
      pan = { x: pan.x + box.width / 2 - x, y: pan.y + box.height / 2 - y };
      placeSheet();
    }
  }

  // ---- Wiring --------------------------------------------------------

  function buildControls() {
    $("title").textContent = site.title;
    document.title = `${site.title} \u2013 web map`;
    site.views.forEach((view, i) => {
      const label = document.createElement("label");
      const radio = document.createElement("input");
      radio.type = "radio";
      radio.name = "view";
      radio.value = view.id;
      radio.checked = i === 0;
      radio.addEventListener("change", () => { viewIndex = i; showPictures(); });
      label.append(radio, " " + view.caption);
      $("views").append(label);
    });
    for (let k = 0; k < 16; k++) {
      const row = $("habs").insertRow();
      const name = document.createElement("th");
      name.scope = "row";
      row.append(name);
      row.insertCell();
    }
    const single = site.years.length < 2;
    $("year").max = String(site.years.length - 1);
    $("year").hidden = $("play").hidden = single;
    document.querySelector('label[for="year"]').hidden = single;
  }

  function wireEvents() {
    const map = $("map");
    let press = null; // where a press began, until it is a drag or a click
    map.addEventListener("pointerdown", (ev) => {
      press = { x: ev.clientX, y: ev.clientY, pan: { ...pan }, dragging: false };
      map.setPointerCapture(ev.pointerId);
    });
    map.addEventListener("pointermove", (ev) => {
      if (press && (press.dragging || Math.hypot(ev.clientX - press.x, ev.clientY - press.y) > 4)) {
        press.dragging = true;
        map.classList.add("dragging");
        pan = { x: press.pan.x + ev.clientX - press.x, y: press.pan.y + ev.clientY - press.y };
        placeSheet();
      }
      pointer = universeAt(ev.clientX, ev.clientY);
      showReadout();
    });
    map.addEventListener("pointerup", (ev) => {
      const wasDrag = !press || press.dragging;
      press = null;
      map.classList.remove("dragging");
      if (wasDrag) return;
      pointer = universeAt(ev.clientX, ev.clientY);
      const picked = showReadout().Picked;
      // A click beside every planet leaves the panel as it was.
      if (picked.length) showPanel(picked[picked.length - 1]);
    });
    map.addEventListener("pointercancel", () => { press = null; map.classList.remove("dragging"); });
    map.addEventListener("wheel", (ev) => {
      ev.preventDefault();
      zoomTo(zoomLevel() + (ev.deltaY < 0 ? 1 : -1), ev.clientX, ev.clientY);
    }, { passive: false });
    map.addEventListener("keydown", (ev) => {
      const step = 0.1 * map.clientWidth;
      const moves = { ArrowLeft: [step, 0], ArrowRight: [-step, 0], ArrowUp: [0, step], ArrowDown: [0, -step] };
      if (ev.key === "+" || ev.key === "=") zoomTo(zoomLevel() + 1);
      else if (ev.key === "-") zoomTo(zoomLevel() - 1);
      else if (ev.key === "0") zoomTo(wholeMapLevel());
      else if (ev.shiftKey && moves[ev.key]) {
        pan = { x: pan.x + moves[ev.key][0], y: pan.y + moves[ev.key][1] };
        placeSheet();
      } else return;
      ev.preventDefault();
      ev.stopPropagation();
    });
    $("zoomIn").addEventListener("click", () => zoomTo(zoomLevel() + 1));
    $("zoomOut").addEventListener("click", () => zoomTo(zoomLevel() - 1));
    $("zoomWhole").addEventListener("click", () => zoomTo(wholeMapLevel()));
    $("names").addEventListener("change", showPictures);
    $("year").addEventListener("input", () => goToYear(Number($("year").value)));
    $("play").addEventListener("click", () => play(!playing));
    $("search").addEventListener("input", find);
    $("search").addEventListener("keydown", (ev) => {
      const first = $("matches").querySelector("button");
      if (ev.key === "Enter" && first) choose(Number(first.dataset.row));
    });
    const tabs = [...document.querySelectorAll('[role="tab"]')];
    for (const tab of tabs) {
      tab.addEventListener("click", () => selectTab(tab));
      tab.addEventListener("keydown", (ev) => {
        const by = { ArrowLeft: -1, ArrowRight: 1 }[ev.key];
        if (!by) return;
        const next = tabs[(tabs.indexOf(tab) + by + tabs.length) % tabs.length];
        selectTab(next);
        next.focus();
        ev.preventDefault();
      });
    }
    // Left and right step a year, except where they move within a control.
    document.addEventListener("keydown", (ev) => {
      const by = { ArrowLeft: -1, ArrowRight: 1 }[ev.key];
      const inControl = ev.target.closest("input, textarea, select, [role=tab]");
      if (!by || inControl || ev.altKey || ev.ctrlKey || ev.metaKey || ev.shiftKey) return;
      goToYear(yearIndex + by);
      ev.preventDefault();
    });
    new ResizeObserver(placeSheet).observe(map);
    window.addEventListener("scroll", () => { mapBox = map.getBoundingClientRect(); }, { capture: true, passive: true });
  }

  // The index has arrived: build the page, show the first year, then fetch
  // the panels and the other years while the user looks.
  async function start(index) {
    site = index;
    buildControls();
    wireEvents();
    await load("year", site.years[0]);
    zoom = ZoomLevels[wholeMapLevel()];
    placeSheet();
    await goToYear(0);
    await $("picture").decode().catch(() => {});
    performance.mark("map-ready");
    for (const year of site.years) await Promise.all([load("year", year), load("panels", year)]);
    document.body.dataset.loaded = "true";
  }

  return {
    site: (index) => { start(index); },
    year: (data) => handOver("year", data),
    panels: (data) => handOver("panels", data),
    readoutAt,
    panel: panelOf,
    // What the page shows now, for scripts that drive it.
    state: () => ({
      year: site.years[yearIndex], view: site.views[viewIndex].id, names: $("names").checked, zoom,
      pointer, row: shownRow, marked: markedRow,
      panel: shownRow && arrived.panels.has(site.years[yearIndex]) ? panelOf(shownRow) : null,
    }),
  };
})();
