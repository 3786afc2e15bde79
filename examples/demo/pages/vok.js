// What the demo's pages share besides the page kit.

// The packages of this site, by the version that they install.
const packages = {'1.0.0': '/payload/agent-1.0.txt', '1.1.0': '/payload/agent-1.1.txt'};
const newestVersion = '1.1.0';

// Starts the install tool for `what`: 'install', 'upgrade', 'repair' or 'uninstall'. install.html follows it.
function startTool(what, version, installerUrl = packages[version]) {
    const nextUrl = installer.address('/install.html', {do: what, installed: version});
    installer.startTool(what, what === 'uninstall' ? {nextUrl}
        : {nextUrl, installerUrl, configTemplateUrl: '/payload/agent.conf.template'});
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

// The Cancel button of every page asks the installer first, then the user.
element('cancel')?.addEventListener('click', () => {
    const callbackUrl = installer.address('/cancel.html', {back: location.pathname + location.search});
    installer.run('cancel', {callbackUrl});
});
