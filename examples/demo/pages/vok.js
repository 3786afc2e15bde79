// What the pages share: running a command of the installer, reading its answer, following the install tool.

// Where the installer's configuration says that command URLs begin. No other page may have an address that
// begins so.
const commandUrlPrefix = location.origin + '/command';

// The packages of this site, by the version that they install.
const packages = {'1.0.0': '/payload/agent-1.0.txt', '1.1.0': '/payload/agent-1.1.txt'};
const newestVersion = '1.1.0';

// Address of a page of this site with a query of these parameters.
function pageUrl(name, params = {}) {
    const pairs = Object.entries(params).map(([key, value]) => key + '=' + encodeURIComponent(value));
    return location.origin + '/' + name + (pairs.length ? '?' + pairs.join('&') : '');
}

// The address when it is one of this site, else its first page: where a page goes is not for others to say.
function ownUrl(address) {
    const url = new URL(address ?? '/', location.origin);
    return url.origin === location.origin ? url.href : pageUrl('welcome.html');
}

// Has the installer run a command: it does so when the page at the command URL has loaded. Every value is
// escaped, for "&" and "=" would end it. The answer comes as the query of `callbackUrl`; install, upgrade, repair
// and uninstall give none, their tool reports to `reportUrl`. The installer ignores parameters that it does not
// know; `followUrl` is for our own page at the command URL, see working.html.
function runCommand(name, params = {}) {
    const pairs = Object.entries({command: name, ...params});
    sendQuery(pairs.map(([key, value]) => key + '=' + encodeURIComponent(value)).join('&'));
}

// The same for a query that is written already.
function sendQuery(query) {
    sessionStorage.setItem('sent', query);
    location.href = commandUrlPrefix + '?' + query;
}

// Starts the install tool for `what`: 'install', 'upgrade', 'repair' or 'uninstall'. The page install.html then
// follows it. The job's name ties the tool's reports to the page that asks for them.
function startTool(what, version, installerUrl = packages[version]) {
    const job = what + '-' + Math.random().toString(36).slice(2, 10);
    const params = {
        reportUrl: pageUrl('report', {job}),
        followUrl: pageUrl('install.html', {do: what, installed: version, job}),
    };
    if (what !== 'uninstall') {
        params.configTemplateUrl = location.origin + '/payload/agent.conf.template';
        params.installerUrl = location.origin + installerUrl;
    }
    runCommand(what, params);
}

// A text with its percent escapes decoded; as it stands when they are malformed.
function decoded(text) {
    try {
        return decodeURIComponent(text);
    } catch {
        return text;
    }
}

// The pairs of a query, decoded. "+" stays "+": the installer does not escape what it puts into a query.
function pairsOf(query) {
    return query.replace(/^\?/, '').split('&').filter(piece => piece && !piece.startsWith('=')).map(piece => {
        const [name, ...value] = piece.split('=');
        return [decoded(name), decoded(value.join('='))];
    });
}

const received = Object.fromEntries(pairsOf(location.search));

// Name of the command that this page is the answer to, if it is one.
const answered = received.event === 'finished' && received.result === 'success' ? received.action : undefined;

// What the first page was told, for every page after it.
function told() {
    return Object.fromEntries(pairsOf(sessionStorage.getItem('told') ?? ''));
}

// Asks the site again and again how the install tool is getting on, and hands each answer to `heard`, until
// that returns true. `heard` gets undefined while the site does not answer.
async function follow(job, heard) {
    for (;;) {
        let report;
        try {
            report = await (await fetch(pageUrl('progress', {job}))).json();
        } catch {
            // Said by an undefined report.
        }
        if (heard(report)) {
            return;
        }
        await new Promise(resolve => setTimeout(resolve, 400));
    }
}

const element = id => document.getElementById(id);

function show(id, visible = true) {
    element(id).hidden = !visible;
}

// Fills a description list with rows of a name, a value and, if given, a smaller line below.
function fillFacts(id, rows) {
    element(id).replaceChildren(...rows.flatMap(([name, value, more]) => {
        const term = document.createElement('dt');
        const description = document.createElement('dd');
        term.textContent = name;
        description.textContent = value || '(empty)';
        if (more) {
            description.append(Object.assign(document.createElement('small'), {textContent: more}));
        }
        return [term, description];
    }));
}

// The Cancel button of every page asks the installer first, then the person.
element('cancel')?.addEventListener('click', () => {
    const back = location.pathname + location.search;
    runCommand('cancel', {callbackUrl: pageUrl('cancel.html', {back})});
});
