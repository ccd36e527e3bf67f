(() => {
'use strict';
const $ = (s, r = document) => r.querySelector(s), $$ = (s, r = document) => [...r.querySelectorAll(s)];
const el = (tag, props = {}, ...kids) => { const e = Object.assign(document.createElement(tag), props); e.append(...kids); return e; };
document.documentElement.classList.add('js');

/* ---- a handle, as people write it: 0x…, decimal, or bare hex with a digit */
const number = w => /^0x[0-9a-f]{1,8}$/i.test(w) ? parseInt(w, 16) : /^\d+$/.test(w) ? +w : NaN;
const hex = w => /^(0x)?([0-9a-f]{3,8})$/i.test(w) && /\d/.test(w) ? w.replace(/^0x/i, '').toLowerCase() : '';

/* ---- search over everything with a name or a handle; read from the page at the first search */
let index;
function gather() {
  if (index) return index;
  index = [];
  const add = (kind, name, handle, href, extra = '') => index.push({ kind, name, low: name.toLowerCase(), handle, n: handle ? parseInt(handle, 16) : -1, href, extra, rank: index.length });
  for (const p of $$('.pg')) {
    const name = $('h3', p).textContent, code = $('dl code', p);
    add('table', name, code ? code.textContent : '', '#' + p.id);
    for (const a of $$('.ac li', p)) add('action', a.firstChild.textContent.trim(), $('u', a).textContent, '#' + p.id, ' of ' + name);
  }
  for (const r of $$('#Lattached .groups tbody tr')) {
    const c = r.cells;
    add(c[2].textContent, path(r) + c[0].textContent, c[1].textContent, '#' + r.id);
  }
  for (const r of $$('.phv tbody tr')) add('PHV field', $('th', r).textContent, '', '#' + r.id);
  for (const r of $$('[data-s]')) add(r.dataset.s, (($('b', r) && r.dataset.s === 'hash') ? $('b', r) : r.firstChild).textContent, $('code', r) ? $('code', r).textContent : '', '#other');
  return index;
}
const path = row => { const g = row.closest('.grp'); return g ? g.dataset.p : ''; };

function find(text) {
  const words = text.trim().toLowerCase().split(/\s+/).filter(Boolean);
  if (!words.length) return [];
  const out = [];
  for (const it of gather()) {
    let score = 0;
    for (const w of words) {
      const h = hex(w), at = it.low.indexOf(w), n = number(w);
      if (n === it.n) score += 1000;
      else if (at >= 0) {
        const last = it.low.lastIndexOf('.') + 1;
        score += it.low.slice(last) === w ? 300 : it.low.startsWith(w, last) ? 200 : at >= last ? 120 : 60;
      } else if (h && it.handle && it.handle.slice(2).includes(h)) score += 40;
      else if ((it.kind + it.extra.toLowerCase()).includes(w)) score += 10;
      else { score = -1; break; }
    }
    if (score > 0) out.push([score - it.low.length / 100, it]);
  }
  return out.sort((a, b) => b[0] - a[0] || a[1].rank - b[1].rank).map(p => p[1]);
}

const box = $('#q'), hits = $('#hits_');
let chosen = -1;
function shade(name, words) {            /* the words that match, marked; text alone is ever written */
  const f = document.createDocumentFragment(), low = name.toLowerCase();
  let i = 0;
  while (i < name.length) {
    let at = -1, len = 0;
    for (const w of words) { const p = low.indexOf(w, i); if (p >= 0 && (at < 0 || p < at)) { at = p; len = w.length; } }
    if (at < 0) { f.append(name.slice(i)); break; }
    f.append(name.slice(i, at), el('mark', {}, name.slice(at, at + len)));
    i = at + len;
  }
  return f;
}
function named(it, words) {
  const i = it.name.lastIndexOf('.') + 1;
  return el('span', {}, el('s', {}, shade(it.name.slice(0, i), words)), el('b', {}, shade(it.name.slice(i), words)), el('s', {}, it.extra));
}
function show() {
  const words = box.value.trim().toLowerCase().split(/\s+/).filter(Boolean), all = find(box.value);
  hits.textContent = ''; chosen = -1;
  hits.hidden = !words.length; box.setAttribute('aria-expanded', String(!!words.length));
  box.removeAttribute('aria-activedescendant');
  if (!words.length) return;
  all.slice(0, 40).forEach((it, i) => {
    const a = el('a', { href: it.href, id: 'h_' + i, tabIndex: -1 }, named(it, words), el('small', {}, it.kind + (it.handle ? '  ' + it.handle : '')));
    a.setAttribute('role', 'option'); a.onclick = () => { hits.hidden = true; };
    hits.append(a);
  });
  hits.append(el('p', {}, all.length > 40 ? `and ${(all.length - 40).toLocaleString('en')} more: type more of the name` : all.length ? '' : 'No name or handle like this.'));
  pick(0);
}
function pick(i) {
  const as = $$('a', hits);
  if (!as.length) return;
  chosen = (i + as.length) % as.length;
  as.forEach((a, k) => a.setAttribute('aria-selected', String(k === chosen)));
  as[chosen].scrollIntoView({ block: 'nearest' });
  box.setAttribute('aria-activedescendant', as[chosen].id);
}
if (box) {
  $('.srch').hidden = false;
  box.oninput = show; box.onfocus = () => { gather(); if (box.value) show(); };
  box.onkeydown = e => {
    if (e.key === 'ArrowDown') { pick(chosen + 1); e.preventDefault(); }
    else if (e.key === 'ArrowUp') { pick(chosen - 1); e.preventDefault(); }
    else if (e.key === 'Enter') { const a = $$('a', hits)[chosen]; if (a) a.click(); }
    else if (e.key === 'Escape') { if (hits.hidden) box.blur(); else hits.hidden = true; e.stopPropagation(); }
  };
  addEventListener('click', e => { if (!e.target.closest('.srch')) hits.hidden = true; });
}

/* ---- lists: filter, sort, a hundred rows at a time */
for (const list of $$('.list')) {
  const groups = $('.groups', list), heads = $$('thead', groups)[0], head = $('.ghead', list);
  if (!heads) continue;
  let rows, sortBy = -1, down = false, limit = 100;
  const input = el('input', { type: 'search', placeholder: 'Filter: words  pipe:0  stage:4  kind:hash  size>1000', spellcheck: false });
  input.setAttribute('aria-label', 'Filter this list');
  const count = el('small'), reset = el('button', { className: 'moreb', hidden: true, type: 'button' }, 'By control');
  count.setAttribute('aria-live', 'polite');
  const flat = el('div', { className: 'x', hidden: true }), more = el('button', { className: 'moreb', hidden: true, type: 'button' }, '');
  list.prepend(el('div', { className: 'bar' }, input, count, reset));
  list.append(flat, more);
  const names = [...heads.rows[0].cells].map(c => c.textContent);
  const col = n => names.indexOf(n), size = names.findIndex(n => n === 'Entries' || n === 'Size');
  const read = () => rows = rows || $$('tbody tr', groups).map((tr, i) => {
    const c = [...tr.cells].map(x => x.textContent); c[0] = path(tr) + c[0];
    return { tr, c, i, n: +tr.id.slice(1), low: c.join(' ').toLowerCase() };
  });
  const pipes = list.dataset.p.split(';').map(p => { const [on, ab] = p.split(':'), [a, b] = (ab || '').split('-').map(Number); return { on: on.split(' '), a, b }; });
  const stage = (text, n) => /\d/.test(text) && text.split(', ').some(p => { const [a, b] = p.split('–').map(Number); return n >= a && n <= (b === undefined ? a : b); });
  const num = s => { const v = parseFloat(s.replace(/,/g, '')); return isNaN(v) ? -1 : v; };
  function complaint(w) {                /* says why no row can match      */
    const [, key, op, value] = /^(\w+)([:<>])(.*)$/.exec(w) || [], isNumber = /^(size|stage|pipe)$/.test(key);
    if (!key || rows.some(r => r.low.includes(w))) return '';
    if (!/^(pipe|stage|kind|dir|size)$/.test(key)) return `No key ${key}; keys are pipe, stage, kind, dir and size`;
    if ((key === 'size') === (op === ':')) return `Write ${key === 'size' ? 'size>1000 or size<1000' : key + ':' + (isNumber ? '4' : '…')}`;
    if (isNumber && !/^\d+$/.test(value)) return `${key}${op} needs a number`;
    return value ? '' : `${key}: needs a word`;
  }
  function passes(r, words) {
    return words.every(w => {
      let m;
      if ((m = /^stage:(\d+)$/.exec(w))) return stage(r.c[col('Stages')], +m[1]);
      if ((m = /^pipe:(\d+)$/.exec(w))) return pipes.some(p => p.on.includes(m[1]) && r.n >= p.a && r.n <= p.b);
      if ((m = /^kind:(.+)$/.exec(w))) return r.c[col('Kind')].toLowerCase().replace(/ /g, '_').startsWith(m[1]);
      if ((m = /^dir:(.+)$/.exec(w))) return r.c[col('Direction')].startsWith(m[1]);
      if ((m = /^size([<>])(\d+)$/.exec(w))) return m[1] === '>' ? num(r.c[size]) > +m[2] : num(r.c[size]) < +m[2];
      if (r.low.includes(w)) return true;
      return number(w) === parseInt(r.c[1], 16);
    });
  }
  function draw() {
    const words = input.value.trim().toLowerCase().split(/\s+/).filter(Boolean), on = words.length || sortBy >= 0;
    groups.hidden = on; head.hidden = on; flat.hidden = !on; more.hidden = true; reset.hidden = !on;
    if (!on) { count.textContent = ''; return; }
    const wrong = read() && words.map(complaint).find(Boolean);
    if (wrong) { count.textContent = wrong; flat.hidden = true; return 0; }
    const got = rows.filter(r => passes(r, words));
    if (sortBy >= 0) {
      const numeric = !/^(Name|Kind|Direction|Of table|What)$/.test(names[sortBy]);
      got.sort((a, b) => { const x = a.c[sortBy], y = b.c[sortBy], d = numeric && !/^0x/.test(x) ? num(x) - num(y) : x < y ? -1 : x > y ? 1 : 0; return (down ? -d : d) || a.i - b.i; });
    }
    const thead = heads.cloneNode(true), body = el('tbody');
    thead.classList.remove('vh');
    [...thead.rows[0].cells].forEach((th, k) => button(th, k));
    for (const r of got.slice(0, limit)) {
      const tr = r.tr.cloneNode(true), p = path(r.tr), b = $('b', tr);
      tr.removeAttribute('id');
      if (p && b.parentNode.tagName === 'TD') { const s = el('span', { className: 'a' }); b.replaceWith(s); s.append(el('s', {}, p), b); }
      else if (p) b.before(el('s', {}, p));
      body.append(tr);
    }
    flat.replaceChildren(el('table', { className: 'ls' }, $('colgroup', groups).cloneNode(true), thead, body));
    count.textContent = `${got.length.toLocaleString('en')} of ${rows.length.toLocaleString('en')}`;
    more.hidden = got.length <= limit; flat.hidden = !got.length; more.textContent = `Show ${Math.min(500, got.length - limit)} more`;
    return got.length;
  }
  function button(th, k) {
    const b = el('button', { type: 'button' }, th.textContent + (sortBy === k ? (down ? ' ↓' : ' ↑') : ''));
    if (sortBy === k) th.setAttribute('aria-sort', down ? 'descending' : 'ascending');
    b.onclick = () => {
      if (sortBy === k) down = !down; else { sortBy = k; down = /^(Entries|Size|Actions|Attached|Idle bits)$/.test(names[k]); }
      limit = 100; draw(); const n = $$('th button', flat)[k]; if (n) n.focus();
    };
    th.replaceChildren(b);
  }
  $$('thead', groups).forEach(t => [...t.rows[0].cells].forEach((th, k) => button(th, k)));
  input.oninput = () => { limit = 100; draw(); };
  input.onkeydown = e => { if (e.key === 'Escape') { input.value = ''; draw(); e.stopPropagation(); } };
  reset.onclick = () => { input.value = ''; sortBy = -1; draw(); input.focus(); };
  if (!head.childNodes.length) reset.textContent = 'All';
  more.onclick = () => { limit += 500; draw(); };
  list.ask = q => { input.value = q; sortBy = size; down = true; limit = 100; return draw(); };
  list.tell = a => { if (a) count.append('; ', a); };
  list.clear = () => { if (!groups.hidden) return; input.value = ''; sortBy = -1; draw(); };
}
addEventListener('click', e => {
  const a = e.target.closest('a[data-q]');
  if (!a) return;
  const [x, y] = $$('.list').filter(l => l.ask).map(l => [l, l.ask(a.dataset.q), '#' + l.parentNode.id]);
  const other = n => n ? el('a', { href: n[2] }, `${n[1].toLocaleString('en')} under ${$('h2', n[0].parentNode).textContent}`) : '';
  if (x && y) { if (y[1]) x[0].tell(other(y)); if (x[1]) y[0].tell(other(x)); if (!x[1] || !y[1]) { location.hash = (x[1] ? x : y)[2]; e.preventDefault(); } }
});

/* ---- what belongs together lights up: under the pointer, and of the page that is open */
let marked = [], held = [];
const same = t => $$(`[data-t="${t}"]`);
addEventListener('pointerover', e => {
  const a = e.target.closest && e.target.closest('.b[data-t],.lf[data-t],.hb[data-t]');
  marked.forEach(x => x.classList.remove('on'));
  document.body.classList.toggle('hl', !!a);
  marked = a ? same(a.dataset.t) : [];
  marked.forEach(x => x.classList.add('on'));
});
let from = null;
function arrive() {
  held.forEach(x => x.classList.remove('sel'));
  held = [];
  const id = decodeURIComponent(location.hash.slice(1)), t = id && document.getElementById(id);
  if (!t) return;
  if (t.classList.contains('pg')) {
    held = same(id.slice(1));
    held.forEach(x => x.classList.add('sel'));
    if (!t.contains(document.activeElement)) { from = document.activeElement; t.tabIndex = -1; t.setAttribute('role', 'dialog'); t.setAttribute('aria-label', $('h3', t).textContent); t.focus({ preventScroll: true }); }
  } else if (t.tagName === 'TR') {
    const list = t.closest('.list'), d = t.closest('details');
    if (list && list.clear) list.clear();
    if (d) d.open = true;
    t.scrollIntoView({ block: 'center' });
  } else if (t.tagName === 'DETAILS') t.open = true;
}
addEventListener('hashchange', arrive);
arrive();

/* ---- keys: / searches, Esc closes the page, arrows walk the floorplan (one tab stop each) */
addEventListener('keydown', e => {
  if (e.key === '/' && box && !/^(INPUT|TEXTAREA)$/.test(document.activeElement.tagName) && !e.ctrlKey && !e.metaKey) { box.focus(); box.select(); e.preventDefault(); }
  else if (e.key === 'Escape' && $('.pg:target')) { location.hash = '_'; if (from && from.isConnected) from.focus({ preventScroll: true }); }
});
/* ---- the treemap: a click on the head of a group fills the frame with it, a second click goes back */
for (const map of $$('.tm')) {
  const sides = ['left', 'top', 'width', 'height'], boxes = [...map.children].map(e => ({ e, at: sides.map(k => parseFloat(e.style[k])) }));
  let inside = null;
  const zoom = group => {
    inside = group === inside ? null : group;
    const [x, y, w, h] = inside ? inside.at : [0, 0, 100, 100], frame = map.getBoundingClientRect();
    for (const { e, at } of boxes) {
      const to = [(at[0] - x) / w, (at[1] - y) / h, at[2] / w, at[3] / h];
      sides.forEach((k, i) => { e.style[k] = 100 * to[i] + '%'; });
      const wide = to[2] * frame.width, high = to[3] * frame.height;
      if (e.matches('.lf:not(.more)') && wide > 40 && high > 15) {      /* a name where there is room now */
        e.classList.add('L', 'S');
        if (!e.firstChild) e.append(el('b', {}, e.title.split(' · ')[0].replace(/.*\.(?=.)/, '')));
      }
    }
  };
  for (const box of boxes.filter(b => b.e.matches('.g0,.g1,.g2') && b.e.firstChild)) {
    box.e.setAttribute('role', 'button');
    box.e.onclick = () => zoom(box);
    box.e.onkeydown = e => { if (e.key === 'Enter' || e.key === ' ') { zoom(box); e.preventDefault(); } };
  }
}
for (const plan of $$('.cs,.tm,.hm tbody')) {
  const all = $$('a,[role=button]', plan);
  all.forEach((a, i) => { a.tabIndex = i ? -1 : 0; });
  plan.addEventListener('keydown', e => {
    const d = { ArrowLeft: [-1, 0], ArrowRight: [1, 0], ArrowUp: [0, -1], ArrowDown: [0, 1] }[e.key], cur = document.activeElement;
    if (!d || !all.includes(cur)) return;
    e.preventDefault();
    const r = cur.getBoundingClientRect(), cx = r.x + r.width / 2, cy = r.y + r.height / 2;
    let best = null, least = Infinity;
    for (const a of all) {
      const q = a.getBoundingClientRect(), x = q.x + q.width / 2 - cx, y = q.y + q.height / 2 - cy;
      const ahead = d[0] ? x * d[0] : y * d[1], off = d[0] ? Math.max(0, Math.abs(y) - q.height / 2) : Math.abs(x);
      const far = ahead + (d[0] ? 1000 : 3) * off;      /* to the side: what is beside it comes first */
      if (a !== cur && ahead > 4 && (d[0] || off < (q.width + r.width) / 2) && far < least) { least = far; best = a; }
    }
    if (best) { cur.tabIndex = -1; best.tabIndex = 0; best.focus(); }
  });
}

/* ---- print: what is folded is unfolded, but for what has more than 400 rows; and folded again */
let unfolded = [];
addEventListener('beforeprint', () => {
  const short = e => $$('tbody tr,li', e).length <= 400;
  unfolded = [...$$('.list').filter(short), ...$$('main details').filter(d => !d.closest('.list') && short(d))]
    .flatMap(e => [e, ...$$('details', e)]).filter(e => e.open === false);
  unfolded.forEach(d => { d.open = true; });
});
addEventListener('afterprint', () => unfolded.forEach(d => { d.open = false; }));
})();
