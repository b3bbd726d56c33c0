"use strict";
// The page of a report document. Texts of the project come into it as text nodes and attributes
// alone, so none of them can become markup.
(() => {
  const ROW_HEIGHT = 30;
  // Browsers give up on elements much higher than this.
  const MAX_BODY_HEIGHT = 15_000_000;
  const ROWS_AROUND = 8;
  const PRINTED_ROWS = 20_000;
  const FIRST_ROWS = 100;
  const SAMPLED_ROWS = 4000;
  const CHART_BARS = 10;
  const SEARCH_DELAY = 120;
  const VARIANTS = { member: "按构件", floor: "按楼层", system: "按系统" };

  const count = (number) => number.toLocaleString("zh-CN");

  function element(tag, attributes = {}, ...children) {
    const made = document.createElement(tag);
    for (const [name, value] of Object.entries(attributes)) {
      made.setAttribute(name, value);
    }
    made.append(...children);
    return made;
  }

  function svg(tag, attributes = {}, text = "") {
    const made = document.createElementNS("http://www.w3.org/2000/svg", tag);
    for (const [name, value] of Object.entries(attributes)) {
      made.setAttribute(name, value);
    }
    made.textContent = text;
    return made;
  }

  function button(text, label, onClick) {
    const made = element("button", { type: "button" }, text);
    if (label) {
      made.setAttribute("aria-label", label);
      made.title = label;
    }
    made.addEventListener("click", onClick);
    return made;
  }

  // The text with its hits as <mark>; all of it where letter case changes its length.
  function marked(text, wanted) {
    const lower = text.toLowerCase();
    if (!wanted || !lower.includes(wanted)) {
      return [text];
    }
    if (lower.length !== text.length) {
      return [element("mark", {}, text)];
    }
    const parts = [];
    let from = 0;
    for (let at = lower.indexOf(wanted); at >= 0; at = lower.indexOf(wanted, from)) {
      parts.push(text.slice(from, at), element("mark", {}, text.slice(at, at + wanted.length)));
      from = at + wanted.length;
    }
    parts.push(text.slice(from));
    return parts;
  }

  /** The rows of a table as a tree, and which of them are open. A row is [kind, cell, ...]. */
  class Tree {
    constructor(kinds, rows) {
      const size = rows.length;
      this.kinds = kinds;
      this.rows = rows;
      this.parents = new Int32Array(size).fill(-1);
      this.ends = new Int32Array(size).fill(size); // behind the last row below
      this.levels = new Uint8Array(size); // from 1
      this.positions = new Int32Array(size); // among the children of the parent, from 1
      this.children = new Int32Array(size + 1); // by row + 1; [0] counts the outermost
      this.open = new Uint8Array(size);
      this.search = null;
      this.visible = new Int32Array(size);
      this.visibleCount = 0;
      this.#nest();
      this.depths = [...new Set(rows.map((row) => kinds[row[0]].depth))].sort((a, b) => a - b);
    }

    #nest() {
      const above = [];
      for (let row = 0; row < this.rows.length; ++row) {
        const depth = this.depth(row);
        while (above.length > 0 && this.depth(above[above.length - 1]) >= depth) {
          this.ends[above.pop()] = row;
        }
        const parent = above.length > 0 ? above[above.length - 1] : -1;
        this.parents[row] = parent;
        this.levels[row] = above.length + 1;
        this.positions[row] = ++this.children[parent + 1];
        above.push(row);
      }
    }

    kind(row) {
      return this.kinds[this.rows[row][0]];
    }
    depth(row) {
      return this.kind(row).depth;
    }
    hasChildren(row) {
      return this.children[row + 1] > 0;
    }
    isOpen(row) {
      return (this.search ? this.search.open : this.open)[row] === 1;
    }
    setOpen(row, isOpen) {
      (this.search ? this.search.open : this.open)[row] = isOpen && this.hasChildren(row) ? 1 : 0;
    }

    /** Opens what is above the level-th depth of the table, from 1, and closes the rest. A deeper row
     * shows where it follows an open one at once. */
    openTo(level) {
      const depth = this.depths[level - 1];
      for (let row = 0; row < this.rows.length; ++row) {
        this.setOpen(row, this.depth(row) < depth);
      }
    }

    /** How many rows openTo(level) leaves visible. */
    countTo(level) {
      const depth = this.depths[level - 1];
      return this.parents.reduce((sum, up) => sum + (up < 0 || this.depth(up) < depth ? 1 : 0), 0);
    }

    openSiblings(row) {
      const parent = this.parents[row];
      const end = parent < 0 ? this.rows.length : this.ends[parent];
      for (let at = parent + 1; at < end; at = this.ends[at]) {
        this.setOpen(at, true);
      }
    }

    /** Shows only rows that `isHit` and those above them, until clearSearch. */
    startSearch(isHit) {
      const size = this.rows.length;
      const search = { hit: new Uint8Array(size), below: new Uint8Array(size), hits: 0 };
      for (let row = 0; row < size; ++row) {
        if (isHit(row)) {
          search.hit[row] = 1;
          ++search.hits;
          for (let up = this.parents[row]; up >= 0 && !search.below[up]; up = this.parents[up]) {
            search.below[up] = 1;
          }
        }
      }
      search.open = search.below.slice();
      this.search = search;
    }
    clearSearch() {
      this.search = null;
    }

    // A hit without hits below it shows, once opened, all that is below it.
    #isListed(row) {
      const { hit, below } = this.search;
      const parent = this.parents[row];
      return hit[row] || below[row] || (parent >= 0 && !below[parent]);
    }

    update() {
      const isOpen = this.search ? this.search.open : this.open;
      let found = 0;
      for (let row = 0; row < this.rows.length;) {
        if (this.search && !this.#isListed(row)) {
          row = this.ends[row];
          continue;
        }
        this.visible[found++] = row;
        row = isOpen[row] ? row + 1 : this.ends[row];
      }
      this.visibleCount = found;
    }

    /** The place of a row among the visible ones, or of the nearest visible row above it. */
    placeOf(row) {
      let low = 0;
      let high = this.visibleCount;
      while (low < high) {
        const middle = (low + high) >> 1;
        if (this.visible[middle] <= row) {
          low = middle + 1;
        } else {
          high = middle;
        }
      }
      return Math.max(low - 1, 0);
    }
  }

  /** One table of the document: its head, its tree and which columns it shows. */
  class Table {
    constructor(head, source) {
      this.head = head;
      this.source = source;
      this.shown = head.columns.map((column) => column.shown);
      this.query = "";
      this.level = 0;
      this.active = 0;
    }

    title() {
      const variant = VARIANTS[this.head.variant];
      return this.head.title + (variant ? `（${variant}）` : "");
    }

    /** Reads the rows, which can be many, when they are asked for. */
    load() {
      if (this.tree) {
        return;
      }
      this.tree = new Tree(this.head.kinds, JSON.parse(this.source.textContent));
      const used = new Set(this.tree.rows.map((row) => row[0]));
      this.used = this.head.kinds.filter((_, kind) => used.has(kind));
      this.occurring = new Set(this.used.flatMap((kind) => kind.columns));
      this.level = 1;
      while (this.level < this.tree.depths.length && this.tree.countTo(this.level + 1) <= FIRST_ROWS) {
        ++this.level;
      }
      if (this.tree.rows.length > 0) {
        this.tree.openTo(this.level);
      }
      this.tree.update();
      this.arrange();
    }

    /** Places the cells: the first text of each kind of row goes into the tree's column. */
    arrange() {
      const { columns } = this.head;
      const isName = (column) => columns[column].type === "text" || columns[column].type === "code";
      const labels = new Set();
      const own = new Set();
      for (const kind of this.used) {
        const shown = kind.columns.filter((column) => this.shown[column]);
        kind.label = shown.find(isName) ?? -1;
        kind.shownAt = shown.map((column) => kind.columns.indexOf(column) + 1);
        if (kind.label >= 0) {
          labels.add(kind.label);
        }
        shown.filter((column) => column !== kind.label).forEach((column) => own.add(column));
      }
      this.labels = [...labels];
      this.own = [...own].sort((a, b) => a - b);
      this.texts = null;
    }

    treeHeading() {
      return this.labels.map((column) => this.head.columns[column].heading).join(" / ") || "级别";
    }

    /** The cell of a row in a column; null where its kind has none. */
    cell(row, column) {
      const at = this.tree.kind(row).columns.indexOf(column);
      return at < 0 ? null : this.tree.rows[row][at + 1];
    }
    label(row) {
      return this.cell(row, this.tree.kind(row).label) ?? "";
    }
    /** What a row has in one of the columns beside the tree's. */
    ownCell(row, column) {
      return this.tree.kind(row).label === column ? null : this.cell(row, column);
    }

    /** All shown cells of a row in lower case. */
    text(row) {
      this.texts ??= new Array(this.tree.rows.length);
      if (this.texts[row] === undefined) {
        let text = "";
        for (const at of this.tree.kind(row).shownAt) {
          text += `${this.tree.rows[row][at]}\n`;
        }
        this.texts[row] = text.toLowerCase();
      }
      return this.texts[row];
    }

    /** Widths for the cells of a sample of the rows, in pixels: [tree, own...]. Long texts are cut
     * further where the columns need more than `room`. */
    widths(room) {
      const clamp = (low, value, high) => Math.round(Math.min(Math.max(low, value), high));
      const heading = (column) => textWidth(this.head.columns[column].heading) + 24;
      let tree = 0;
      const widths = this.own.map(heading);
      const step = Math.max(1, Math.floor(this.tree.rows.length / SAMPLED_ROWS));
      for (let row = 0; row < this.tree.rows.length; row += step) {
        tree = Math.max(tree, textWidth(this.label(row)) + 18 * this.tree.levels[row] + 40);
        this.own.forEach((column, i) => {
          widths[i] = Math.max(widths[i], textWidth(this.ownCell(row, column) ?? "") + 24);
        });
      }
      const cut = (most) => [clamp(280, tree, 520), ...widths.map((width) => clamp(64, width, most))];
      const wide = cut(340);
      return wide.reduce((sum, width) => sum + width) > room ? cut(190) : wide;
    }
  }

  // About how wide a text is at the grid's size; characters of Chinese are squares.
  function textWidth(text) {
    let width = 0;
    for (let i = 0; i < text.length && width < 600; ++i) {
      width += text.charCodeAt(i) > 0x2e7f ? 14 : 7.8;
    }
    return width;
  }

  /** The tree grid: rows are made as they come into view. */
  class Grid {
    constructor(onChange) {
      this.onChange = onChange;
      this.headRow = element("div", { role: "row", class: "row head-row", "aria-rowindex": 1 });
      this.body = element("div", { role: "rowgroup", class: "body" });
      this.node = element("div", { role: "treegrid", class: "grid", tabindex: 0, id: "grid", "aria-readonly": "true" },
        element("div", { role: "rowgroup", class: "head" }, this.headRow), this.body);
      this.made = new Map();
      this.node.addEventListener("scroll", () => this.#later(), { passive: true });
      this.node.addEventListener("keydown", (event) => this.#onKey(event));
      this.body.addEventListener("click", (event) => this.#onClick(event, false));
      this.body.addEventListener("dblclick", (event) => this.#onClick(event, true));
      new ResizeObserver(() => this.render()).observe(this.node);
    }

    show(table) {
      this.table = table;
      this.node.setAttribute("aria-label", [table.title(), table.head.discipline].filter(Boolean).join(" "));
      this.showColumns();
      this.node.scrollTop = 0;
      this.rowsChanged();
    }

    showColumns() {
      const { table } = this;
      this.node.hidden = false;
      const heading = (column) => {
        const { heading: text, type } = table.head.columns[column];
        return element("div", { role: "columnheader", class: `cell ${type}`, title: text }, text);
      };
      const tree = table.treeHeading();
      this.headRow.replaceChildren(
        element("div", { role: "columnheader", class: "cell tree", title: tree }, tree), ...table.own.map(heading));
      this.node.setAttribute("aria-colcount", table.own.length + 1);
      const widths = table.widths(this.node.clientWidth);
      const [first, ...others] = widths.map((width) => `${width}px`);
      this.node.style.setProperty("--columns", [`minmax(${first}, 1fr)`, ...others].join(" "));
      this.node.style.setProperty("--width", `${widths.reduce((sum, width) => sum + width)}px`);
      this.#forget();
    }

    rowsChanged() {
      const { tree } = this.table;
      tree.update();
      this.node.hidden = tree.visibleCount === 0;
      this.node.setAttribute("aria-rowcount", tree.visibleCount + 1);
      this.full = tree.visibleCount * ROW_HEIGHT;
      this.height = Math.min(this.full, MAX_BODY_HEIGHT);
      this.body.style.height = `${this.height}px`;
      this.#forget();
      this.render();
      this.onChange();
    }

    #forget() {
      this.made.clear();
      this.body.replaceChildren();
    }
    #later() {
      this.waiting ??= requestAnimationFrame(() => {
        this.waiting = undefined;
        this.render();
      });
    }

    viewHeight() {
      return Math.max(this.node.clientHeight - this.headRow.offsetHeight, ROW_HEIGHT);
    }
    // The body may be lower than its rows are together; then a scroll goes further than it looks.
    #ratio() {
      const view = this.viewHeight();
      return this.height < this.full ? (this.full - view) / (this.height - view) : 1;
    }

    render() {
      if (!this.table) {
        return;
      }
      const { tree } = this.table;
      const top = this.node.scrollTop * this.#ratio();
      const shift = this.node.scrollTop - top;
      const first = Math.max(0, Math.floor(top / ROW_HEIGHT) - ROWS_AROUND);
      const last = Math.min(tree.visibleCount, Math.ceil((top + this.viewHeight()) / ROW_HEIGHT) + ROWS_AROUND);
      const made = new Map();
      const rows = [];
      for (let place = first; place < last; ++place) {
        const row = tree.visible[place];
        const node = this.made.get(row) ?? this.#makeRow(row, place);
        node.style.top = `${place * ROW_HEIGHT + shift}px`;
        node.classList.toggle("active", row === this.table.active);
        made.set(row, node);
        rows.push(node);
      }
      this.made = made;
      this.body.replaceChildren(...rows);
      const active = made.get(this.table.active);
      if (active) {
        this.node.setAttribute("aria-activedescendant", active.id);
      } else {
        this.node.removeAttribute("aria-activedescendant");
      }
    }

    #makeRow(row, place) {
      const { table } = this;
      const { tree } = table;
      const level = tree.levels[row];
      const node = element("div", {
        role: "row", id: `row-${row}`, class: `row level-${Math.min(level, 4)}`, "aria-level": level,
        "aria-rowindex": place + 2, "aria-posinset": tree.positions[row],
        "aria-setsize": tree.children[tree.parents[row] + 1], "data-row": row, "data-kind": tree.kind(row).kind,
      });
      if (tree.search?.hit[row]) {
        node.classList.add("hit");
      }
      node.append(this.#treeCell(row, level), ...table.own.map((column) => this.#ownCell(row, column)));
      if (tree.hasChildren(row)) {
        node.setAttribute("aria-expanded", tree.isOpen(row));
      }
      return node;
    }

    #treeCell(row, level) {
      const { table } = this;
      const label = table.label(row);
      const id = table.head.columns[table.tree.kind(row).label]?.id ?? "";
      const cell = element("div", { role: "rowheader", class: "cell tree", title: label, "data-column": id });
      cell.style.paddingInlineStart = `${8 + (level - 1) * 18}px`;
      const toggle = table.tree.hasChildren(row) ? "toggle" : "toggle none";
      cell.append(element("span", { class: toggle, "aria-hidden": "true" }),
        element("span", { class: "text" }, ...marked(label, table.query)));
      return cell;
    }

    #ownCell(row, column) {
      const text = this.table.ownCell(row, column);
      const { type, id } = this.table.head.columns[column];
      const cell = element("div", { role: "gridcell", class: `cell ${type}` });
      if (text !== null) {
        cell.setAttribute("data-column", id);
        cell.append(...marked(text, this.table.query));
        if (text.length > 8) {
          cell.title = text;
        }
      }
      return cell;
    }

    activate(row) {
      this.table.active = row;
      const top = this.table.tree.placeOf(row) * ROW_HEIGHT;
      const ratio = this.#ratio();
      const view = this.viewHeight();
      const from = this.node.scrollTop * ratio;
      if (top < from) {
        this.node.scrollTop = top / ratio;
      } else if (top + ROW_HEIGHT > from + view) {
        this.node.scrollTop = (top + ROW_HEIGHT - view) / ratio;
      }
      this.render();
      this.onChange();
    }

    setOpen(row, isOpen) {
      this.table.tree.setOpen(row, isOpen);
      this.table.level = 0;
      this.rowsChanged();
    }

    #onClick(event, isDouble) {
      const node = event.target.closest("[data-row]");
      if (!node) {
        return;
      }
      const row = Number(node.getAttribute("data-row"));
      const isToggle = event.target.classList.contains("toggle");
      this.activate(row);
      if (isToggle !== isDouble) {
        this.setOpen(row, !this.table.tree.isOpen(row));
      }
    }

    #onKey(event) {
      if (event.ctrlKey || event.altKey || event.metaKey) {
        return;
      }
      const { table } = this;
      const { tree } = table;
      if (tree.visibleCount === 0) {
        return;
      }
      const page = Math.max(1, Math.floor(this.viewHeight() / ROW_HEIGHT) - 1);
      const place = tree.placeOf(table.active);
      const row = tree.visible[place];
      const go = (to) => this.activate(tree.visible[Math.min(Math.max(to, 0), tree.visibleCount - 1)]);
      const keys = {
        ArrowDown: () => go(place + 1),
        ArrowUp: () => go(place - 1),
        PageDown: () => go(place + page),
        PageUp: () => go(place - page),
        Home: () => go(0),
        End: () => go(tree.visibleCount - 1),
        ArrowRight: () => this.#inward(row, place),
        ArrowLeft: () => this.#outward(row),
        Enter: () => this.setOpen(row, !tree.isOpen(row)),
        " ": () => this.setOpen(row, !tree.isOpen(row)),
        "*": () => {
          tree.openSiblings(row);
          table.level = 0;
          this.rowsChanged();
        },
      };
      if (Object.hasOwn(keys, event.key)) {
        event.preventDefault();
        keys[event.key]();
      }
    }

    #inward(row, place) {
      const { tree } = this.table;
      if (tree.hasChildren(row) && !tree.isOpen(row)) {
        this.setOpen(row, true);
      } else if (tree.isOpen(row)) {
        this.activate(tree.visible[place + 1]);
      }
    }

    #outward(row) {
      const { tree } = this.table;
      if (tree.isOpen(row)) {
        this.setOpen(row, false);
      } else if (tree.parents[row] >= 0) {
        this.activate(tree.parents[row]);
      }
    }
  }

  // Quantities by name for each unit, largest first; names that occur in several sections are summed.
  function chartGroups(table) {
    const { columns } = table.head;
    const at = (id) => columns.findIndex((column) => column.id === id);
    const [name, unit, quantity] = [at("specification"), at("unit"), at("quantity")];
    const units = new Map();
    for (let row = 0; row < table.tree.rows.length; ++row) {
      const value = Number(table.cell(row, quantity) || NaN);
      if (value > 0 && Number.isFinite(value)) {
        const key = table.cell(row, unit) ?? "";
        const sums = units.get(key) ?? units.set(key, new Map()).get(key);
        const label = table.cell(row, name) ?? "";
        sums.set(label, (sums.get(label) ?? 0) + value);
      }
    }
    return [...units].map(([key, sums]) => ({ unit: key, sums: [...sums].sort((a, b) => b[1] - a[1]) }))
      .sort((a, b) => b.sums.length - a.sums.length);
  }

  const sixDigits = (value) => String(Number(value.toPrecision(6)));

  function shortened(text, width) {
    let end = text.length;
    while (end > 0 && textWidth(text.slice(0, end)) > width) {
      --end;
    }
    return end < text.length ? `${text.slice(0, end - 1)}…` : text;
  }

  // `name` is the figure's own in the page.
  function chartOf({ unit, sums }, name) {
    const [labelWidth, barWidth, line, width] = [210, 230, 23, 540];
    const bars = sums.slice(0, CHART_BARS);
    const title = unit ? `单位：${unit}` : "无单位";
    const described = bars.map(([label, value]) => `${label} ${sixDigits(value)} ${unit}`).join("；");
    const height = bars.length * line + 8;
    const chart = svg("svg", {
      viewBox: `0 0 ${width} ${height}`, role: "img", class: "chart",
      "aria-labelledby": `${name}-title ${name}-text`,
    });
    chart.append(svg("title", { id: `${name}-title` }, `工程量，${title}`),
      svg("desc", { id: `${name}-text` }, described));
    bars.forEach(([label, value], i) => {
      const length = Math.max(2, (value / bars[0][1]) * barWidth);
      const bar = svg("g");
      bar.append(svg("title", {}, `${label}：${sixDigits(value)} ${unit}`),
        svg("text", { x: labelWidth, y: i * line + 16, class: "name" }, shortened(label, labelWidth - 8)),
        svg("rect", { x: labelWidth + 8, y: i * line + 4, width: length, height: line - 8, rx: 2 }),
        svg("text", { x: labelWidth + 14 + length, y: i * line + 16, class: "value" }, `${sixDigits(value)} ${unit}`));
      chart.append(bar);
    });
    const rest = sums.length - bars.length;
    return element("figure", {},
      element("figcaption", {}, rest > 0 ? `${title}，最大的 ${CHART_BARS} 项，另有 ${count(rest)} 项` : title), chart);
  }

  function hasChart(table) {
    const ids = table.head.columns.map((column) => column.id);
    return table.head.report === "overview" && ["specification", "unit", "quantity"].every((id) => ids.includes(id));
  }
  const charts = (table, name) => chartGroups(table).map((group, i) => chartOf(group, `${name}-${i}`));

  // Texts of a list of names and values as a definition list.
  function pairList(pairs, name) {
    return element("dl", { class: name },
      ...pairs.map((pair) => element("div", {}, element("dt", {}, pair.name), element("dd", {}, pair.value))));
  }

  // The open rows as a table that the printer can break into pages.
  function printed(head, table) {
    const { tree } = table;
    const rows = Math.min(tree.visibleCount, PRINTED_ROWS);
    const body = element("tbody");
    for (let place = 0; place < rows; ++place) {
      body.append(printedRow(table, tree.visible[place]));
    }
    const headings = [element("th", { scope: "col" }, table.treeHeading()), ...table.own.map((column) =>
      element("th", { scope: "col", class: table.head.columns[column].type }, table.head.columns[column].heading))];
    const parts = [
      element("h1", {}, [table.title(), table.head.discipline].filter(Boolean).join(" · ")),
      pairList([{ name: "工程", value: head.project }, { name: "更新", value: head.changed },
        ...head.choices, ...table.head.filter].filter((pair) => pair.value), "facts"),
    ];
    if (tree.visibleCount > rows) {
      parts.push(element("p", { class: "warning" },
        `已展开 ${count(tree.visibleCount)} 行，只打印前 ${count(rows)} 行。请收起部分级别或搜索后再打印。`));
    }
    if (table.query) {
      parts.push(element("p", {}, `搜索：${table.query}`));
    }
    if (hasChart(table)) {
      parts.push(element("div", { class: "charts" }, ...charts(table, "printed-chart")));
    }
    return [...parts, element("table", {}, element("thead", {}, element("tr", {}, ...headings)), body)];
  }

  function printedRow(table, row) {
    const level = table.tree.levels[row];
    const label = element("th", { scope: "row" }, table.label(row));
    label.style.paddingInlineStart = `${4 + (level - 1) * 10}px`;
    const outer = table.tree.hasChildren(row) ? " outer" : "";
    return element("tr", { class: `level-${Math.min(level, 4)}${outer}` }, label, ...table.own.map((column) =>
      element("td", { class: table.head.columns[column].type }, table.ownCell(row, column) ?? "")));
  }

  /** The page around the grid. */
  class Page {
    constructor() {
      this.head = JSON.parse(document.querySelector("script.head").textContent);
      const sources = document.querySelectorAll("script.rows");
      this.tables = [...document.querySelectorAll("script.table")].map(
        (script, i) => new Table(JSON.parse(script.textContent), sources[i]));
      this.grid = new Grid(() => this.#showState());
      this.print = element("div", { id: "print" });
      document.title = `${this.head.project} · 工程量报表`;
      this.#build();
      document.body.append(this.app, this.print);
      this.#watch();
      if (this.tables.length > 0) {
        this.show(this.tables[0]);
      } else {
        this.main.replaceChildren(element("p", { class: "empty" }, "没有可显示的报表。"));
      }
    }

    #build() {
      this.title = element("h2", { id: "title" });
      this.facts = element("div", { class: "facts-of-table" });
      this.chart = element("details", { class: "panel", open: "" });
      this.empty = element("p", { class: "empty", hidden: "" }, "没有数据行。");
      this.path = element("div", { class: "path" });
      this.cells = element("div", { class: "cells" });
      this.state = element("div", { class: "state", role: "status", id: "state" });
      this.main = element("main", {}, element("div", { class: "table-head" }, this.title, this.facts),
        this.#toolbar(), this.chart, this.grid.node, this.empty,
        element("footer", {}, element("div", { class: "current" }, this.path, this.cells), this.state));
      this.app = element("div", { id: "app" }, this.#header(),
        element("div", { class: "columns" }, ...(this.tables.length > 1 ? [this.#nav()] : []), this.main));
    }

    #header() {
      const facts = [{ name: "更新", value: this.head.changed }, ...this.head.choices].filter((pair) => pair.value);
      return element("header", {}, element("h1", {}, this.head.project), pairList(facts, "facts"));
    }

    #nav() {
      const nav = element("nav", { "aria-label": "报表" });
      this.links = new Map();
      let list = null;
      let last = null;
      for (const table of this.tables) {
        if (table.title() !== last) {
          last = table.title();
          list = element("ul");
          nav.append(element("h2", {}, last), list);
        }
        const link = button(table.head.discipline || "全部专业", "", () => this.show(table));
        link.append(element("span", { class: "count" }, `${count(table.head.rows)} 行`));
        list.append(element("li", {}, link));
        this.links.set(table, link);
      }
      return nav;
    }

    #toolbar() {
      this.levels = element("div", { role: "group", class: "levels", "aria-label": "展开到级别" });
      this.input = element("input", {
        type: "search", id: "search", placeholder: "搜索…", "aria-label": "搜索", autocomplete: "off",
        spellcheck: "false",
      });
      this.input.addEventListener("input", () => {
        clearTimeout(this.timer);
        this.timer = setTimeout(() => this.#search(), SEARCH_DELAY);
      });
      this.input.addEventListener("keydown", (event) => this.#onSearchKey(event));
      this.menu = element("fieldset", { class: "menu", id: "columns", hidden: "" });
      this.menuButton = button("列 ▾", "选择显示的列", () => this.#toggleMenu(this.menu.hidden));
      this.menuButton.setAttribute("aria-expanded", "false");
      this.menuButton.setAttribute("aria-controls", "columns");
      const print = button("打印", "", () => window.print());
      print.id = "print-button";
      return element("div", { class: "toolbar" }, this.levels, this.input,
        element("div", { class: "menu-place" }, this.menuButton, this.menu), print);
    }

    #watch() {
      window.addEventListener("beforeprint", () => {
        if (this.table) {
          this.print.replaceChildren(...printed(this.head, this.table));
        }
      });
      window.addEventListener("afterprint", () => this.print.replaceChildren());
      document.addEventListener("click", (event) => {
        if (!event.target.closest(".menu-place")) {
          this.#toggleMenu(false);
        }
      });
      document.addEventListener("keydown", (event) => {
        if (event.key === "Escape" && !this.menu.hidden) {
          this.#toggleMenu(false);
          this.menuButton.focus();
        }
      });
    }

    show(table) {
      table.load();
      this.table = table;
      for (const [other, link] of this.links ?? []) {
        link.setAttribute("aria-current", other === table);
      }
      this.title.textContent = [table.title(), table.head.discipline].filter(Boolean).join(" · ");
      this.facts.replaceChildren(...(table.head.filter.length > 0 ? [pairList(table.head.filter, "facts")] : []));
      this.input.value = table.queryText ?? "";
      this.#showLevels();
      this.#showMenu();
      this.#showChart();
      this.grid.show(table);
    }

    #showLevels() {
      const { table } = this;
      const { depths } = table.tree;
      const nameOf = (depth) => [...new Set(table.used.filter((kind) => kind.depth === depth && kind.label >= 0)
        .map((kind) => table.head.columns[kind.label].heading))].join("、");
      this.levels.replaceChildren(element("span", { class: "label", "aria-hidden": "true" }, "级别"),
        ...depths.map((depth, i) => {
          const made = button(String(i + 1), `展开到第 ${i + 1} 级：${nameOf(depth)}`, () => this.#openTo(i + 1));
          made.setAttribute("data-level", i + 1);
          return made;
        }));
      this.levels.hidden = depths.length < 2;
    }

    #openTo(level) {
      this.table.tree.openTo(level);
      this.table.level = level;
      this.#keepActive();
    }

    // The active row, or what is left of the way to it, stays in view.
    #keepActive() {
      const { tree } = this.table;
      this.grid.rowsChanged();
      if (tree.visibleCount > 0) {
        this.grid.activate(tree.visible[tree.placeOf(this.table.active)]);
      }
    }

    #toggleMenu(isOpen) {
      this.menu.hidden = !isOpen;
      this.menuButton.setAttribute("aria-expanded", isOpen);
      if (isOpen) {
        this.menu.querySelector("input")?.focus();
      }
    }

    #showMenu() {
      const { table } = this;
      const items = [...table.occurring].sort((a, b) => a - b).map((column) => {
        const { id, heading } = table.head.columns[column];
        const box = element("input", { type: "checkbox", "data-id": id });
        box.checked = table.shown[column];
        box.addEventListener("change", () => {
          table.shown[column] = box.checked;
          this.#columnsChanged();
        });
        return element("label", {}, box, heading);
      });
      const reset = button("恢复默认", "", () => {
        table.shown = table.head.columns.map((column) => column.shown);
        this.#showMenu();
        this.#columnsChanged();
      });
      this.menu.replaceChildren(element("legend", {}, "显示的列"), ...items, reset);
    }

    #columnsChanged() {
      this.table.arrange();
      this.#showLevels();
      this.grid.showColumns();
      if (this.table.query) {
        this.#search();
      } else {
        this.grid.rowsChanged();
      }
    }

    #showChart() {
      this.chart.hidden = !hasChart(this.table);
      const groups = this.chart.hidden ? [] : charts(this.table, "chart");
      this.chart.hidden ||= groups.length === 0;
      this.chart.replaceChildren(element("summary", {}, "主要工程量"), element("div", { class: "charts" }, ...groups));
    }

    #search() {
      const { table } = this;
      clearTimeout(this.timer);
      table.queryText = this.input.value;
      table.query = this.input.value.trim().toLowerCase();
      if (table.query) {
        table.tree.startSearch((row) => table.text(row).includes(table.query));
      } else {
        table.tree.clearSearch();
      }
      this.#keepActive();
    }

    #onSearchKey(event) {
      if (event.key === "Escape" && this.input.value) {
        event.preventDefault();
        this.input.value = "";
        this.#search();
      } else if (event.key === "Enter") {
        this.#search();
        this.#nextHit();
      } else if (event.key === "ArrowDown") {
        event.preventDefault();
        this.grid.node.focus();
      }
    }

    #nextHit() {
      const { tree, active } = this.table;
      if (!tree.search || tree.search.hits === 0) {
        return;
      }
      const from = tree.placeOf(active);
      for (let step = 1; step <= tree.visibleCount; ++step) {
        const row = tree.visible[(from + step) % tree.visibleCount];
        if (tree.search.hit[row]) {
          this.grid.activate(row);
          return;
        }
      }
    }

    #showState() {
      const { table } = this;
      const { tree } = table;
      const shown = `显示 ${count(tree.visibleCount)} 行，共 ${count(tree.rows.length)} 行`;
      const state = tree.search ? `找到 ${count(tree.search.hits)} 行；${shown}` : shown;
      if (this.state.textContent !== state) {
        this.state.textContent = state;
      }
      this.empty.hidden = tree.visibleCount > 0;
      this.empty.textContent = tree.search ? "没有符合搜索的行。" : "没有数据行。";
      for (const made of this.levels.querySelectorAll("button")) {
        made.setAttribute("aria-pressed", !tree.search && Number(made.getAttribute("data-level")) === table.level);
      }
      this.#showActive();
    }

    // Where the active row is, and all of its cells without cuts.
    #showActive() {
      const { table } = this;
      const { tree, active } = table;
      if (tree.visibleCount === 0) {
        this.path.textContent = "";
        this.cells.textContent = "";
        return;
      }
      const way = [];
      for (let row = active; row >= 0; row = tree.parents[row]) {
        way.unshift(table.label(row));
      }
      this.path.textContent = way.join(" › ");
      this.cells.textContent = table.own.filter((column) => table.ownCell(active, column))
        .map((column) => `${table.head.columns[column].heading}：${table.ownCell(active, column)}`).join("　");
    }
  }

  new Page();
})();
